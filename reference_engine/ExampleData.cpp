#include "ExampleData.h"

#include "Failure.h"

#include <array>
#include <filesystem>
#include <random>

#include <opencv2/imgcodecs.hpp>

namespace KeloReference {
namespace {

namespace fs = std::filesystem;

const int Cell = 20;
const int PerDigit = 500;
const int RowLength = 5;
const int GoodDigit = 1;
// Digits held out of training are taken from the end of each digit's 500.
const int HeldOutStart = 400;

// The anomalies of the red example: every digit but the good one, in turn.
int OtherDigit(int index) {
    return (GoodDigit + 1 + index % 9) % 10;
}

class DigitSheet {
public:
    explicit DigitSheet(const std::string& path)
        : sheet_(cv::imread(path, cv::IMREAD_GRAYSCALE)) {
        if (sheet_.cols != 100 * Cell || sheet_.rows != 50 * Cell)
            Refuse("'" + path + "' is no sheet of 50 by 100 digits of 20 by 20 pixels");
    }

    // The index-th sample of a digit; each digit fills five rows of the sheet.
    cv::Mat Digit(int digit, int index) const {
        const int cell = digit * PerDigit + index;
        return sheet_(cv::Rect(cell % 100 * Cell, cell / 100 * Cell, Cell, Cell));
    }

private:
    cv::Mat sheet_;
};

void Write(const fs::path& file, const cv::Mat& image) {
    fs::create_directories(file.parent_path());
    if (!cv::imwrite(file.string(), image))
        Refuse("cannot write '" + file.string() + "'");
}

std::string Numbered(int number) {
    return cv::format("%04d.png", number);
}

// Rows of five random digits with their text in the file name. Each digit's samples are taken
// in turn from the one numbered first on.
void WriteRows(const DigitSheet& sheet, const fs::path& folder, int rows, int first,
               std::mt19937& random) {
    std::uniform_int_distribution<int> digitOf(0, 9);
    std::array<int, 10> next;
    next.fill(first);
    for (int row = 0; row < rows; ++row) {
        std::string text;
        std::vector<cv::Mat> cells;
        for (int position = 0; position < RowLength; ++position) {
            const int digit = digitOf(random);
            text += std::to_string(digit);
            cells.push_back(sheet.Digit(digit, next[static_cast<std::size_t>(digit)]++));
        }
        cv::Mat line;
        cv::hconcat(cells, line);
        Write(folder / (text + "_" + Numbered(row)), line);
    }
}

} // namespace

void WriteDigitsExample(const std::string& digitsSheet, const std::string& folder,
                        const ExampleCounts& counts) {
    const DigitSheet sheet(digitsSheet);
    const fs::path training = fs::path(folder) / "training";
    const fs::path unseen = fs::path(folder) / "unseen";
    for (int digit = 0; digit < 10; ++digit) {
        for (int index = 0; index < counts.greenPerClass; ++index)
            Write(training / "green" / std::to_string(digit) / Numbered(index),
                  sheet.Digit(digit, index));
        for (int index = 0; index < counts.unseenPerKind / 10 + 1; ++index)
            Write(unseen / "green" / (std::to_string(digit) + "_" + Numbered(index)),
                  sheet.Digit(digit, HeldOutStart + index));
    }
    for (int index = 0; index < counts.redGood; ++index)
        Write(training / "red" / "good" / Numbered(index), sheet.Digit(GoodDigit, 100 + index));
    for (int index = 0; index < counts.redBad; ++index)
        Write(training / "red" / "bad" / Numbered(index),
              sheet.Digit(OtherDigit(index), 100 + index));
    for (int index = 0; index < counts.unseenPerKind; ++index) {
        Write(unseen / "red" / ("good_" + Numbered(index)),
              sheet.Digit(GoodDigit, HeldOutStart + 50 + index));
        Write(unseen / "red" / ("bad_" + Numbered(index)),
              sheet.Digit(OtherDigit(index), HeldOutStart + 50 + index));
    }
    std::mt19937 random(61);
    WriteRows(sheet, training / "blue", counts.blueRows, 200, random);
    WriteRows(sheet, unseen / "blue", counts.unseenPerKind, HeldOutStart, random);
}

} // namespace KeloReference
