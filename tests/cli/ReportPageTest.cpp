// The report's page holds its data where no text from outside can end the script around it.
#include <gtest/gtest.h>

#include "ReportPage.h"

namespace ReportPageTesting {

using namespace TavrinCli;
using nlohmann::json;

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// The text between the data's script element's tags.
std::string EmbeddedData(const std::string& page) {
    const std::string open = "<script type=\"application/json\" id=\"report-data\">";
    const auto start = page.find(open) + open.size();
    return page.substr(start, page.find("</script>", start) - start);
}

TEST(ReportPage, NamesThatWouldEndTheScriptStayDataAndComeBackWhole) {
    const std::string names[] = {"</script><script>window.pwned = 1</script>.png",
                                 "<!--<script>.png", "<img src=x onerror=alert(1)>.png",
                                 "plain.png"};
    const std::string empty = ReportPage(json{{"cards", json::array()}});
    for (const std::string& name : names) {
        const json data = {{"cards", {{{"name", name}}}}};
        const std::string page = ReportPage(data);
        EXPECT_EQ(Occurrences(page, "</script"), Occurrences(empty, "</script")) << name;
        EXPECT_EQ(Occurrences(page, "<!--"), 0u) << name;
        EXPECT_EQ(json::parse(EmbeddedData(page)), data) << name;
    }
}

TEST(ReportPage, TextThatIsNotUtf8IsReplacedRatherThanRefused) {
    const json data = {{"cards", {{{"name", std::string("caf\xe9.png")}}}}};
    EXPECT_EQ(json::parse(EmbeddedData(ReportPage(data)))["cards"][0]["name"],
              "caf\xef\xbf\xbd.png");
}

} // namespace ReportPageTesting
