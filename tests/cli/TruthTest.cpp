// Where eval finds the truth of each image: file names, folders and truth files.
#include <fstream>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Failure.h"
#include "Truth.h"

namespace TruthTesting {

namespace fs = std::filesystem;
using namespace TavrinCli;

// A folder of this process's own that goes with the test.
struct TruthFolder {
    fs::path path = fs::temp_directory_path() / ("tavrin-truth-" + std::to_string(getpid()));
    TruthFolder() { fs::create_directories(path); }
    ~TruthFolder() { fs::remove_all(path); }

    fs::path Write(const std::string& name, const std::string& text) const {
        std::ofstream(path / name, std::ios::binary) << text;
        return path / name;
    }
};

TEST(Truth, NamesGiveTheTextBeforeTheFirstUnderscoreElseTheFolder) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"unseen/green/5_0000.png", "5"}, {"unseen/red/good_12_b.png", "good"},
        {"cats/0001.png", "cats"},        {"cats/_0001.png", "cats"},
        {"data/cats/./0001.png", "cats"}, {"0001.png", std::nullopt},
        {"./0001.png", std::nullopt},     {"cats/../0001.png", std::nullopt},
        {"/0001.png", std::nullopt},
    };
    for (const auto& [image, truth] : cases)
        EXPECT_EQ(TruthFromName(image), truth) << image;
    EXPECT_EQ(Truths().Of("cats/5_1.png"), "5");
}

TEST(Truth, CsvFieldsUnquoteAsTheToolQuotes) {
    using Fields = std::vector<std::string>;
    const std::pair<const char*, std::optional<Fields>> cases[] = {
        {"a.png,5", Fields{"a.png", "5"}},
        {"\"five,5.png\",5", Fields{"five,5.png", "5"}},
        {"\"say \"\"hi\"\"\",x", Fields{"say \"hi\"", "x"}},
        {"a.png,", Fields{"a.png", ""}},
        {"", Fields{""}},
        {"\"a.png,5", std::nullopt},
    };
    for (const auto& [line, fields] : cases)
        EXPECT_EQ(CsvFields(line), fields) << line;
}

TEST(Truth, AFileNamesImagesRelativeToItsFolderAndNothingElseHasTruth) {
    const TruthFolder folder;
    const fs::path file = folder.Write("truth.csv", "\xEF\xBB\xBFimage,truth\r\n"
                                                    "a.png,5\r\n"
                                                    "\"b,1.png\",\"7\"\n"
                                                    "sub/c.png,good\n"
                                                    "d.png,\n"
                                                    "\n");
    const Truths truths(file);
    const std::pair<fs::path, std::optional<std::string>> cases[] = {
        {folder.path / "a.png", "5"},
        {folder.path / "sub" / ".." / "a.png", "5"},
        {folder.path / "b,1.png", "7"},
        {folder.path / "sub" / "c.png", "good"},
        {folder.path / "d.png", std::nullopt},
        {folder.path / "7_e.png", std::nullopt},
        {"a.png", std::nullopt},
    };
    for (const auto& [image, truth] : cases)
        EXPECT_EQ(truths.Of(image), truth) << image;
}

TEST(Truth, BadFilesAreRefusedWithWhereAndWhy) {
    const TruthFolder folder;
    const std::pair<const char*, const char*> cases[] = {
        {"", "is empty"},
        {"\n\n", "is empty"},
        {"name,label\na.png,5\n", "line 1: the header image,truth must come first"},
        {"a.png,5\n", "line 1: the header image,truth must come first"},
        {"image,truth\na.png,5\nb.png,5,6\n", "line 3: image,truth needs 2 fields, not 3"},
        {"image,truth\nb.png\n", "line 2: image,truth needs 2 fields, not 1"},
        {"image,truth\n\"b.png,5\n", "line 2: a quote is not closed"},
        {"image,truth\n,5\n", "line 2: no image named"},
        {"image,truth\na.png,5\n\nsub/../a.png,6\n", "names sub/../a.png twice, on lines 2 and 4"},
    };
    for (const auto& [text, message] : cases) {
        const fs::path file = folder.Write("truth.csv", text);
        try {
            Truths{file};
            ADD_FAILURE() << text << " was taken";
        } catch (const CommandError& error) {
            EXPECT_NE(std::string(error.what()).find(message), std::string::npos)
                << text << ": " << error.what();
        }
    }
    EXPECT_THROW(Truths(folder.path / "missing.csv"), CommandError);
    EXPECT_THROW(Truths{folder.path}, CommandError);
}

} // namespace TruthTesting
