// The reference engine through its exported C interface, resolved by name as the library does.
#include <dlfcn.h>

#include <map>
#include <optional>
#include <regex>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "ExampleWorkspace.h"
#include "Workspace.h"
#include "engine/EngineRecords.h"

namespace {

using ReferenceTests::TrainedExample;

// An entry point of the engine by name, resolved as the library resolves it.
void* EntryPoint(const char* name) {
    static void* const library = dlopen(KELO_REFERENCE_ENGINE, RTLD_NOW | RTLD_LOCAL);
    void* address = library ? dlsym(library, name) : nullptr;
    if (!address)
        throw std::runtime_error(std::string("cannot resolve ") + name);
    return address;
}

#define KELO(name) reinterpret_cast<name##_fn>(EntryPoint(#name))

// One workspace opened under the test's own id, and the engine's last answer.
class ReferenceEngine : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(KELO(kelo_debug_infos)(0, ""), 0);
        ASSERT_EQ(KELO(kelo_initialize)(0, ""), 0);
        ASSERT_EQ(KELO(kelo_init_buffer)(&buffer_), 0);
        id_ = ::testing::UnitTest::GetInstance()->current_test_info()->name();
        ASSERT_EQ(Open(TrainedExample().allTypes), 0) << Error(1);
    }
    void TearDown() override {
        KELO(kelo_runtime_close_workspace)(id_.c_str());
        KELO(kelo_free_buffer)(&buffer_);
    }

    int Open(const std::string& path) {
        return KELO(kelo_runtime_open_workspace_from_file)(id_.c_str(), path.c_str());
    }
    std::string Error(int status) {
        KELO(kelo_get_error_message)(status, &buffer_);
        return buffer_.text;
    }
    // A parameter of the one tool of a stream; "2" marks the streams of the second training.
    std::string Get(const std::string& stream, const std::string& path) {
        EXPECT_EQ(KELO(kelo_runtime_tool_get_parameter)(id_.c_str(), stream.c_str(), ToolOf(stream),
                                                        path.c_str(), &buffer_),
                  0);
        return buffer_.text;
    }
    int Set(const std::string& stream, const std::string& path, const std::string& value) {
        return KELO(kelo_runtime_tool_set_parameter)(id_.c_str(), stream.c_str(), ToolOf(stream),
                                                     path.c_str(), value.c_str());
    }
    static const char* ToolOf(const std::string& stream) {
        static const std::map<std::string, const char*> tools = {
            {"anomaly", "defects"}, {"classify", "classes"}, {"read", "reader"}};
        return tools.at(stream.substr(0, stream.find('2')));
    }

    // Runs an engine image through a stream, freeing the image, and gives the result document;
    // the sample stays until FreeSample, so its resources can be fetched.
    std::string Process(const char* stream, EngineImage& image) {
        const std::string sample = "sample" + std::to_string(++samples_);
        EXPECT_EQ(KELO(kelo_runtime_create_sample)(id_.c_str(), stream, sample.c_str()), 0);
        EXPECT_EQ(KELO(kelo_runtime_sample_add_image)(id_.c_str(), stream, sample.c_str(), &image),
                  0)
            << Error(1);
        KELO(kelo_free_image)(&image);
        EXPECT_EQ(KELO(kelo_runtime_sample_process)(id_.c_str(), stream, "", sample.c_str(), ""), 0)
            << Error(4);
        EXPECT_EQ(KELO(kelo_runtime_get_sample)(id_.c_str(), stream, sample.c_str(), &buffer_), 0);
        lastSample_ = {stream, sample};
        return buffer_.text;
    }
    std::string Run(const char* stream, const cv::Mat& grey) {
        EngineImage image{};
        EXPECT_EQ(KELO(kelo_init_image)(&image), 0);
        const int step = static_cast<int>(grey.step);
        image = {grey.cols, grey.rows, 1, image.reserved, grey.data, grey.depth() == CV_16U, step};
        return Process(stream, image);
    }
    void FreeSample() {
        const auto& [stream, sample] = lastSample_;
        KELO(kelo_runtime_free_sample)(id_.c_str(), stream.c_str(), sample.c_str());
    }

    std::string id_;
    EngineBuffer buffer_{};
    int samples_ = 0;
    std::pair<std::string, std::string> lastSample_;
};

// The values of an attribute in document order.
std::vector<std::string> Attributes(const std::string& document, const std::string& element,
                                    const std::string& attribute) {
    const std::regex pattern("<" + element + " [^>]*?\\b" + attribute + "=\"([^\"]*)\"");
    std::vector<std::string> values;
    for (auto match = std::sregex_iterator(document.begin(), document.end(), pattern);
         match != std::sregex_iterator(); ++match)
        values.push_back((*match)[1]);
    return values;
}

// Streams in file order, and tool and model types as trained.
TEST_F(ReferenceEngine, ListsTheCatalogueInFileOrder) {
    ASSERT_EQ(KELO(kelo_runtime_list_streams)(id_.c_str(), &buffer_), 0);
    EXPECT_EQ(Attributes(buffer_.text, "stream", "id"),
              (std::vector<std::string>{"anomaly", "classify", "read", "anomaly2", "classify2",
                                        "read2"}));
    ASSERT_EQ(KELO(kelo_runtime_list_tools)(id_.c_str(), "anomaly2", &buffer_), 0);
    EXPECT_EQ(Attributes(buffer_.text, "tool", "type"), std::vector<std::string>{"red_sua"});
    ASSERT_EQ(KELO(kelo_runtime_blue_list_models)(id_.c_str(), "read", "reader", &buffer_), 0);
    EXPECT_EQ(Attributes(buffer_.text, "model", "type"),
              (std::vector<std::string>{"string", "regex", "layout"}));
}

TEST_F(ReferenceEngine, ParametersKeepTheirTextAndRefuseWhatTheyCannotMean) {
    const struct {
        const char* stream;
        const char* path;
        const char* accepted;
        const char* refused;
        const char* because;
    } cases[] = {
        {"anomaly", "post_processing/red/threshold", "[0.250000,0.750000]", "0.5",
         "not of the form [lower,upper]"},
        {"anomaly", "post_processing/red/region_filter", "area>=4; score>0.9", "size>2",
         "not of the form MEASURE OP NUMBER"},
        {"anomaly", "processing/sampling_density", "0.500000", "12", "lies outside"},
        {"anomaly", "processing/red/sampling_iterations", "2", "-1", "lies outside"},
        {"classify", "post_processing/green/threshold", "0.700000", "abc", "is not a number"},
        {"read", "sampling/feature_size", "16.000000x24.000000", "16xx2",
         "not of the form WIDTHxHEIGHT"},
        {"read", "models/pattern/regex/regex", "[0-4]+", "[0-", "no regular expression"},
        {"read", "models/text/enabled", "false", "False", "neither true nor false"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        ASSERT_EQ(Set(c.stream, c.path, c.accepted), 0) << Error(1);
        EXPECT_EQ(Get(c.stream, c.path), c.accepted);
        const int status = Set(c.stream, c.path, c.refused);
        EXPECT_EQ(status, 1);
        EXPECT_NE(Error(status).find(c.because), std::string::npos) << Error(status);
        EXPECT_EQ(Get(c.stream, c.path), c.accepted);
    }
    EXPECT_EQ(Set("read", "models/nothing/enabled", "true"), 2);
    EXPECT_EQ(Error(2), "tool 'reader' has no parameter 'models/nothing/enabled'");
}

TEST_F(ReferenceEngine, AnomalyRegionsComeWithAHeatMapThatGoesWithTheSample) {
    const cv::Mat bad = TrainedExample().Grey("red", "bad_0000.png");
    const std::string anomalous = Run("anomaly", bad);
    const std::vector<std::string> regions = Attributes(anomalous, "region", "points");
    ASSERT_FALSE(regions.empty()) << anomalous;
    const std::vector<std::string> heatMaps = Attributes(anomalous, "resource", "uuid");
    ASSERT_EQ(heatMaps.size(), 1u);

    EngineImage image{};
    ASSERT_EQ(KELO(kelo_init_image)(&image), 0);
    ASSERT_EQ(KELO(kelo_resource_get_image)(heatMaps[0].c_str(), &image), 0);
    EXPECT_EQ(std::make_tuple(image.width, image.height, image.channels, image.pixelType),
              std::make_tuple(bad.cols, bad.rows, 1, 0));
    const cv::Mat heat(image.height, image.width, CV_8U, const_cast<void*>(image.pixels),
                       static_cast<std::size_t>(image.step));
    EXPECT_GT(cv::norm(heat, cv::NORM_INF), 200);
    KELO(kelo_free_image)(&image);
    FreeSample();
    ASSERT_EQ(KELO(kelo_init_image)(&image), 0);
    EXPECT_EQ(KELO(kelo_resource_get_image)(heatMaps[0].c_str(), &image), 2);
    KELO(kelo_free_image)(&image);
}

// A 4 above a 1, close enough that parts overlapping in columns are merged into one feature.
cv::Mat Stacked() {
    cv::Mat stacked;
    cv::vconcat(TrainedExample().Grey("green", "4_0000.png"),
                TrainedExample().Grey("green", "1_0001.png"), stacked);
    cv::resize(stacked, stacked, cv::Size(), 0.75, 0.75, cv::INTER_AREA);
    return stacked;
}

TEST_F(ReferenceEngine, EveryParameterChangesTheAnswer) {
    const cv::Mat bad = TrainedExample().Grey("red", "bad_0000.png");
    const cv::Mat unsure = TrainedExample().Grey("green", "5_0000.png");
    const cv::Mat row = TrainedExample().Grey("blue", "40342_0012.png");
    const cv::Mat stacked = Stacked();
    using Values = std::optional<std::vector<std::string>>;
    const Values differ; // the answer after the change differs from the one before
    const struct {
        const char* stream;
        const cv::Mat& image;
        const char* path;
        const char* value;
        const char* element;
        const char* attribute;
        Values expected;
    } cases[] = {
        {"anomaly", bad, "processing/sampling_density", "0.5", "resource", "scale",
         Values({"0.5"})},
        {"anomaly", bad, "processing/red/sampling_iterations", "3", "region", "points", Values({})},
        {"anomaly2", bad, "runtime_parameters/max_downsampling_size", "10", "resource", "scale",
         Values({"0.5"})},
        {"anomaly2", bad, "post_process_parameters/red/threshold", "[0.5,1.01]", "region", "points",
         Values({})},
        {"anomaly2", bad, "post_process_parameters/red/region_filter", "area>10000", "region",
         "points", Values({})},
        {"classify", unsure, "processing/sampling_density", "2", "tag", "score", differ},
        {"classify2", unsure, "runtime_parameters/heat_map_on", "true", "resource", "name",
         Values({"heat_map"})},
        {"classify2", unsure, "post_process_parameters/green/threshold", "0.99", "tag", "name",
         Values({})},
        {"read2", row, "processing/sampling_density", "0.5", "feat", "size", differ},
        {"read2", row, "processing/blue/threshold", "0.99", "feat", "id",
         Values({"4", "0", "3", "2"})},
        {"read2", stacked, "processing/blue/precision", "0", "feat", "size",
         Values({"7x11", "3x10"})},
        {"read2", row, "sampling/feature_size", "100x100", "feat", "id", Values({})},
        {"read", row, "models/text/threshold", "0.99", "match", "model_id",
         Values({"pattern", "slots"})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.stream) + " " + c.path);
        const std::string original = Get(c.stream, c.path);
        const std::vector<std::string> before =
            Attributes(Run(c.stream, c.image), c.element, c.attribute);
        ASSERT_EQ(Set(c.stream, c.path, c.value), 0) << Error(1);
        const std::vector<std::string> after =
            Attributes(Run(c.stream, c.image), c.element, c.attribute);
        EXPECT_NE(after, before);
        if (c.expected) {
            EXPECT_EQ(after, *c.expected);
        }
        ASSERT_EQ(Set(c.stream, c.path, original), 0);
    }
}

TEST_F(ReferenceEngine, EveryImageFormGivesTheSameClassification) {
    const cv::Mat grey = TrainedExample().Grey("green", "7_0000.png");
    cv::Mat wide;
    grey.convertTo(wide, CV_16U, 257);
    const std::vector<std::string> expected = Attributes(Run("classify", grey), "tag", "name");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(expected.front(), "7");
    EXPECT_EQ(Attributes(Run("classify", wide), "tag", "name"), expected);

    // A planar colour image arrives through kelo_create_image, its planes last first.
    EngineImage colour{};
    ASSERT_EQ(KELO(kelo_init_image)(&colour), 0);
    ASSERT_EQ(KELO(kelo_create_image)(grey.cols, grey.rows, static_cast<int>(grey.step), 0,
                                      grey.data, grey.data, grey.data, nullptr, &colour),
              0);
    EXPECT_EQ(Attributes(Process("classify", colour), "tag", "name"), expected);
}

TEST_F(ReferenceEngine, ModelsFilterTheRead) {
    // A node model counts the zeros of a read; it is added to the trained file by hand.
    KeloReference::Workspace file = KeloReference::ReadWorkspace(TrainedExample().workspace);
    file.streams.at(2).tools.at(0).models.push_back({"zeros", "node", {}, "0", {}});
    const std::string edited = (TrainedExample().scratch / "with-node.yml").string();
    KeloReference::WriteWorkspace(file, edited);
    KELO(kelo_runtime_close_workspace)(id_.c_str());
    ASSERT_EQ(Open(edited), 0) << Error(3);

    const cv::Mat row = TrainedExample().Grey("blue", "40342_0012.png");
    const std::string read = Run("read", row);
    EXPECT_EQ(Attributes(read, "feat", "id").size(), 5u) << read;
    EXPECT_EQ(Attributes(read, "match", "string"),
              (std::vector<std::string>{"40342", "40342", "0"}));
    EXPECT_EQ(Attributes(read, "match", "node_coords").size(), 1u);
    EXPECT_EQ(Attributes(read, "match", "covers"), (std::vector<std::string>{"0:5", "5/5", "1"}));

    ASSERT_EQ(Set("read", "models/pattern/regex/regex", "[34]{2,}"), 0);
    ASSERT_EQ(Set("read", "models/text/string/min_string_length", "6"), 0);
    ASSERT_EQ(Set("read", "models/zeros/occurrences", "2"), 0);
    ASSERT_EQ(Set("read", "models/slots/enabled", "false"), 0);
    EXPECT_EQ(Attributes(Run("read", row), "match", "string"), std::vector<std::string>{"34"});
    ASSERT_EQ(Set("read", "post_processing/blue/feature_filter", "4,3"), 0);
    EXPECT_EQ(Attributes(Run("read", row), "feat", "id"),
              (std::vector<std::string>{"4", "3", "4"}));
}

TEST_F(ReferenceEngine, RefusesCallsOutOfOrderAndBadImages) {
    const char* ws = id_.c_str();
    EngineImage image{};
    ASSERT_EQ(KELO(kelo_init_image)(&image), 0);
    std::vector<unsigned short> pixels(16);
    image = {4, 4, 1, image.reserved, pixels.data(), 1, 8};
    ASSERT_EQ(KELO(kelo_runtime_create_sample)(ws, "classify", "s"), 0);
    EngineBuffer stray{};
    const auto add = [&](EngineImage added, const char* stream = "classify") {
        return KELO(kelo_runtime_sample_add_image)(ws, stream, "s", &added);
    };
    // The image with one field changed.
    const auto with = [&](auto field, auto value) {
        EngineImage changed = image;
        changed.*field = value;
        return add(changed);
    };
    const struct {
        std::function<int()> call;
        int status;
        const char* text;
    } cases[] = {
        {[&] { return KELO(kelo_runtime_sample_process)(ws, "classify", "", "s", ""); }, 1,
         "sample 's' has no image"},
        {[&] { return KELO(kelo_runtime_get_sample)(ws, "classify", "s", &buffer_); }, 1,
         "sample 's' was not processed"},
        {[&] { return KELO(kelo_runtime_create_sample)(ws, "classify", "s"); }, 1,
         "sample 's' already exists"},
        {[&] { return add(image, "read"); }, 1, "sample 's' belongs to stream 'classify'"},
        {[&] { return with(&EngineImage::step, 6); }, 1,
         "step of 6 bytes is shorter than a row of 8"},
        {[&] { return with(&EngineImage::channels, 2); }, 1, "images of 2 channels are not taken"},
        {[&] { return with(&EngineImage::pixels, nullptr); }, 1, "the image has no pixels"},
        {[&] { return with(&EngineImage::reserved, 7); }, 1,
         "the image record was not initialised by the engine"},
        {[&] { return KELO(kelo_runtime_list_workspaces)(&stray); }, 1,
         "the buffer was not initialised by the engine"},
        {[&] { return KELO(kelo_runtime_list_streams)("none", &buffer_); }, 2,
         "workspace 'none' is not open"},
        {[&] { return KELO(kelo_runtime_list_tools)(ws, "none", &buffer_); }, 2,
         "has no stream 'none'"},
        {[&] { return KELO(kelo_runtime_blue_list_models)(ws, "read", "none", &buffer_); }, 2,
         "stream 'read' has no tool 'none'"},
        {[&] { return Open(TrainedExample().allTypes); }, 1, "is already open"},
        {[&] { return KELO(kelo_runtime_open_workspace_from_file)("other", KELO_DIGITS_SHEET); }, 3,
         "does not parse"},
        {[&] { return KELO(kelo_save_image)(); }, 1,
         "kelo_save_image is not offered by the reference engine"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const int status = c.call();
        EXPECT_EQ(status, c.status);
        EXPECT_NE(Error(status).find(c.text), std::string::npos) << Error(status);
    }
    KELO(kelo_free_image)(&image);

    ASSERT_EQ(KELO(kelo_deinitialize)(), 0);
    EXPECT_EQ(Open(TrainedExample().allTypes), 1);
    EXPECT_EQ(Error(1), "the engine is not initialised");
}

} // namespace
