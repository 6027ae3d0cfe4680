#include "TestEngineControl.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Entry points are reached as the binding reaches them: by name, through the shared signatures.
template <typename Function> Function entry(const char* name) {
    auto function = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
    if (!function) {
        throw std::logic_error(std::string("no entry point ") + name);
    }
    return function;
}

const char* const file = "/workspaces/line3.kw";

class TestEngineTest : public ::testing::Test {
protected:
    void SetUp() override {
        testkelo_reset();
        testkelo_add_file(file, "file-uuid", "2024-05-01 10:00");
        testkelo_add_stream(file, "main", "stream-uuid", "0,0,640,480");
        testkelo_add_tool(file, "main", nullptr, "reader", "uuid-1", "blue_read");
        testkelo_add_tool(file, "main", "reader", "finder", "uuid-2", "red");
        testkelo_add_tool(file, "main", nullptr, "sorter", "uuid-3", "green");
        testkelo_add_parameter(file, "main", "finder", "threshold", "0.500000");
        ASSERT_EQ(0, openWorkspace("ws1"));
        ASSERT_EQ(0, entry<kelo_init_buffer_fn>("kelo_init_buffer")(&buffer));
        testkelo_clear_log();
    }

    int openWorkspace(const char* id) {
        return entry<kelo_runtime_open_workspace_from_file_fn>(
            "kelo_runtime_open_workspace_from_file")(id, file);
    }

    int getThreshold(const char* workspaceId) {
        return entry<kelo_runtime_tool_get_parameter_fn>("kelo_runtime_tool_get_parameter")(
            workspaceId, "main", "finder", "threshold", &buffer);
    }

    std::string errorText(int status) {
        EXPECT_EQ(0, entry<kelo_get_error_message_fn>("kelo_get_error_message")(status, &buffer));
        return buffer.text;
    }

    EngineBuffer buffer{};
};

TEST_F(TestEngineTest, FaultsCountTheirEntryPointsCallsFromWhenTheyArePlanned) {
    ASSERT_EQ(0, getThreshold("ws1"));
    testkelo_fail("kelo_runtime_tool_get_parameter", 2, 7, "device lost");
    testkelo_fail("kelo_runtime_tool_get_parameter", 3, 9, "device gone");
    testkelo_throw("kelo_deinitialize", 1, "engine crashed");

    EXPECT_EQ(0, getThreshold("ws1"));
    EXPECT_EQ(7, getThreshold("ws1"));
    EXPECT_EQ("device lost", errorText(7));
    EXPECT_EQ(9, getThreshold("ws1"));
    EXPECT_EQ(0, getThreshold("ws1"));
    EXPECT_STREQ("0.500000", buffer.text);
    EXPECT_THROW(entry<kelo_deinitialize_fn>("kelo_deinitialize")(), std::runtime_error);
    EXPECT_EQ(0, entry<kelo_deinitialize_fn>("kelo_deinitialize")());
    EXPECT_THROW(testkelo_fail("kelo_free_images", 1, 1, "typo"), std::invalid_argument);

    EXPECT_EQ(8, testkelo_log_size());
    EXPECT_STREQ("kelo_runtime_tool_get_parameter(ws1,main,finder,threshold)",
                 testkelo_log_entry(0));
    EXPECT_STREQ("kelo_get_error_message(7)", testkelo_log_entry(3));
    EXPECT_EQ(5, testkelo_call_count("kelo_runtime_tool_get_parameter"));
}

TEST_F(TestEngineTest, CountsFollowWhatIsTakenAndReleased) {
    const unsigned char pixels[2][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    const EngineImage resource{4, 2, 1, 0, pixels, 0, 4};
    testkelo_add_resource_image("map-uuid", &resource);
    EngineImage input{};
    EngineImage fetched{};

    EXPECT_EQ(0, entry<kelo_init_buffer_fn>("kelo_init_buffer")(&buffer));
    EXPECT_EQ(0, entry<kelo_init_image_fn>("kelo_init_image")(&input));
    EXPECT_EQ(0, entry<kelo_init_image_fn>("kelo_init_image")(&fetched));
    input = {4, 2, 1, input.reserved, pixels, 0, 4};
    EXPECT_EQ(
        0, entry<kelo_runtime_create_sample_fn>("kelo_runtime_create_sample")("ws1", "main", "s1"));
    EXPECT_EQ(0, entry<kelo_runtime_sample_add_image_fn>("kelo_runtime_sample_add_image")(
                     "ws1", "main", "s1", &input));
    EXPECT_EQ(0,
              entry<kelo_resource_get_image_fn>("kelo_resource_get_image")("map-uuid", &fetched));
    EXPECT_NE(static_cast<const void*>(pixels), fetched.pixels);
    EXPECT_EQ(7, static_cast<const unsigned char*>(fetched.pixels)[6]);
    EXPECT_EQ(1, testkelo_count(TESTKELO_BUFFERS));
    EXPECT_EQ(2, testkelo_count(TESTKELO_IMAGES));
    EXPECT_EQ(1, testkelo_count(TESTKELO_SAMPLES));

    EXPECT_EQ(0, entry<kelo_free_image_fn>("kelo_free_image")(&input));
    EXPECT_EQ(0, entry<kelo_free_image_fn>("kelo_free_image")(&fetched));
    EXPECT_EQ(0, entry<kelo_runtime_close_workspace_fn>("kelo_runtime_close_workspace")("ws1"));
    EXPECT_EQ(0, entry<kelo_free_buffer_fn>("kelo_free_buffer")(&buffer));
    EXPECT_EQ(0, testkelo_count(TESTKELO_IMAGES));
    EXPECT_EQ(0, testkelo_count(TESTKELO_SAMPLES));
    EXPECT_EQ(0, testkelo_count(TESTKELO_WORKSPACES));
    EXPECT_EQ(0, testkelo_count(TESTKELO_BUFFERS));
    EXPECT_EQ(0, testkelo_count(TESTKELO_INVALID_HANDLES));

    EXPECT_EQ(TESTKELO_INVALID_HANDLE, entry<kelo_free_image_fn>("kelo_free_image")(&input));
    EXPECT_EQ(TESTKELO_INVALID_HANDLE, entry<kelo_free_buffer_fn>("kelo_free_buffer")(&buffer));
    EXPECT_EQ(2, testkelo_count(TESTKELO_INVALID_HANDLES));
}

TEST_F(TestEngineTest, EachOpenWorkspaceWorksOnItsOwnCopyOfTheFile) {
    ASSERT_EQ(0, openWorkspace("ws2"));
    EXPECT_EQ(TESTKELO_REFUSED, openWorkspace("ws2"));
    EXPECT_EQ(0, entry<kelo_runtime_tool_set_parameter_fn>("kelo_runtime_tool_set_parameter")(
                     "ws1", "main", "finder", "threshold", "0.750000"));
    EXPECT_EQ(TESTKELO_NOT_FOUND,
              entry<kelo_runtime_tool_set_parameter_fn>("kelo_runtime_tool_set_parameter")(
                  "ws1", "main", "finder", "thresold", "0.1"));
    EXPECT_EQ("unknown parameter path 'thresold' of tool 'finder'", errorText(TESTKELO_NOT_FOUND));

    EXPECT_STREQ("0.750000", testkelo_parameter("ws1", "main", "finder", "threshold"));
    ASSERT_EQ(0, getThreshold("ws2"));
    EXPECT_STREQ("0.500000", buffer.text);
    EXPECT_STREQ("ws2", testkelo_workspace_id(file));

    ASSERT_EQ(0,
              entry<kelo_runtime_list_tools_fn>("kelo_runtime_list_tools")("ws2", "main", &buffer));
    EXPECT_STREQ("<tools>\n"
                 "    <tool id=\"reader\" uuid=\"uuid-1\" type=\"blue_read\">\n"
                 "        <tool id=\"finder\" uuid=\"uuid-2\" type=\"red\"/>\n"
                 "    </tool>\n"
                 "    <tool id=\"sorter\" uuid=\"uuid-3\" type=\"green\"/>\n"
                 "</tools>\n",
                 buffer.text);
}

TEST(TestEngineVariants, EachVariantLacksOnlyItsEntryPoint) {
    for (const std::string symbol : {"kelo_debug_infos", "kelo_save_image", "kelo_free_image"}) {
        const std::string path = TESTKELO_ENGINES_DIR "/without_" + symbol + "/libkelo_61.so";
        void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(nullptr, library) << dlerror();
        EXPECT_EQ(nullptr, dlsym(library, symbol.c_str())) << symbol;
        EXPECT_NE(nullptr, dlsym(library, "kelo_init_buffer")) << symbol;
        EXPECT_NE(nullptr, dlsym(library, "kelo_runtime_blue_list_models")) << symbol;
        dlclose(library);
    }
}

} // namespace
