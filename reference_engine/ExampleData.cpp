#include "ExampleData.h"

#include "Failure.h"

#include <algorithm>
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
// The last fifth of each digit's samples is held out of training.
const int HeldOutStart = 400;
const int HeldOutCount = PerDigit - HeldOutStart;

// The anomalies of the red example: every digit but the good one, in turn.
int OtherDigit(int index) {
    return (GoodDigit + 1 + index % 9) % 10;
}

struct SampleIndex {
    int digit;
    int index; // among the digit's 500
};

class DigitSheet {
public:
    explicit DigitSheet(const std::string& path)
        : sheet_(cv::imread(path, cv::IMREAD_GRAYSCALE)) {
        if (sheet_.cols != 100 * Cell || sheet_.rows != 50 * Cell)
            Refuse("'" + path + "' is no sheet of 50 by 100 digits of 20 by 20 pixels");
    }

    // Each digit fills five rows of the sheet.
    cv::Mat Digit(SampleIndex sample) const {
        const int cell = sample.digit * PerDigit + sample.index;
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

// Every digit's samples from first on, count of each, in a shuffled order.
std::vector<SampleIndex> ShuffledSamples(int first, int count, std::mt19937& random) {
    std::vector<SampleIndex> samples;
    for (int digit = 0; digit < 10; ++digit)
        for (int index = first; index < first + count; ++index)
            samples.push_back({digit, index});
    std::shuffle(samples.begin(), samples.end(), random);
    return samples;
}

// Rows of five samples side by side, in the order given, with their text in the file name.
void WriteRows(const DigitSheet& sheet, const fs::path& folder,
               const std::vector<SampleIndex>& samples, int rows) {
    rows = std::min(rows, static_cast<int>(samples.size()) / RowLength);
    for (int row = 0; row < rows; ++row) {
        std::string text;
        std::vector<cv::Mat> cells;
        for (int position = 0; position < RowLength; ++position) {
            const SampleIndex sample =
                samples[static_cast<std::size_t>(row * RowLength + position)];
            text += std::to_string(sample.digit);
            cells.push_back(sheet.Digit(sample));
        }
        cv::Mat line;
        cv::hconcat(cells, line);
        Write(folder / (text + "_" + Numbered(row)), line);
    }
}

void WriteTraining(const DigitSheet& sheet, const fs::path& training, std::mt19937& random) {
    for (int digit = 0; digit < 10; ++digit) {
        const fs::path red = training / "red" / (digit == GoodDigit ? "good" : "bad");
        for (int index = 0; index < HeldOutStart; ++index) {
            const std::string name = std::to_string(digit) + "_" + Numbered(index);
            Write(training / "green" / std::to_string(digit) / name, sheet.Digit({digit, index}));
            Write(red / name, sheet.Digit({digit, index}));
        }
    }
    WriteRows(sheet, training / "blue", ShuffledSamples(0, HeldOutStart, random),
              10 * HeldOutStart / RowLength);
}

void WriteHeldOut(const DigitSheet& sheet, const fs::path& unseen, const ExampleCounts& counts,
                  std::mt19937& random) {
    for (int digit = 0; digit < 10; ++digit)
        for (int index = 0; index < std::min(counts.greenPerDigit, HeldOutCount); ++index)
            Write(unseen / "green" / (std::to_string(digit) + "_" + Numbered(index)),
                  sheet.Digit({digit, HeldOutStart + index}));
    for (int index = 0; index < HeldOutCount; ++index)
        Write(unseen / "red" / ("good_" + Numbered(index)),
              sheet.Digit({GoodDigit, HeldOutStart + index}));
    for (int index = 0; index < std::min(counts.redBad, 9 * HeldOutCount); ++index)
        Write(unseen / "red" / ("bad_" + Numbered(index)),
              sheet.Digit({OtherDigit(index), HeldOutStart + index / 9}));
    WriteRows(sheet, unseen / "blue", ShuffledSamples(HeldOutStart, HeldOutCount, random),
              counts.blueRows);
}

} // namespace

void WriteDigitsExample(const std::string& digitsSheet, const std::string& folder,
                        const ExampleCounts& counts) {
    const DigitSheet sheet(digitsSheet);
    std::mt19937 random(61);
    WriteTraining(sheet, fs::path(folder) / "training", random);
    WriteHeldOut(sheet, fs::path(folder) / "unseen", counts, random);
}

} // namespace KeloReference
