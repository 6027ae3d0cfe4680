#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include <Vision/Core/Registration.h>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace ToolTesting {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;
using namespace Tavrin::Vision::Implementation;

class ProbeTool : public ToolBase {
public:
    explicit ProbeTool(ObjectCreateAccessToken const& token)
        : ToolBase(token, "Probe") {
        Inputs()->Add(CreateObject<ToolPin>("Gain"));
    }
    TAVRIN_SHARED_FROM_THIS(ProbeTool)

    double Gain() const { return gain_; }
    void setGain(double gain) { gain_ = gain; }
    void setDiagFlags(unsigned int flags) { StoreLastRunRecordDiagEnable(flags); }

    std::function<ToolResultConstants(std::string&)> behaviour;
    std::vector<std::string> log;
    int finalConstructs = 0;

protected:
    ToolResultConstants InternalRun(std::string& message) override {
        log.push_back("InternalRun");
        return behaviour(message);
    }
    void OnRunning() override { log.push_back("OnRunning"); }
    void OnRan() override { log.push_back("OnRan"); }
    void OnFinalConstruct() override { ++finalConstructs; }
    void InternalCreateCurrentRecord(std::shared_ptr<Record> record, unsigned int flags) override {
        record->setAnnotation("current " + std::to_string(flags));
    }
    void InternalCreateLastRunRecord(std::shared_ptr<Record> record, unsigned int flags,
                                     unsigned int diagFlags) override {
        record->setAnnotation("last run " + std::to_string(flags) + " " +
                              std::to_string(diagFlags));
    }

private:
    ProbeTool() = default;
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int) {
        archive(cereal::base_class<ToolBase>(this), gain_);
    }

    double gain_ = 1.5;

    RTTR_ENABLE(ToolBase)
};

} // namespace ToolTesting

TAVRIN_ARCHIVED_CLASS(ToolTesting::ProbeTool, 1)
CEREAL_REGISTER_TYPE_WITH_NAME(ToolTesting::ProbeTool, "ToolTesting::ProbeTool")

TAVRIN_REGISTRATION(ToolTest) {
    rttr::registration::class_<ToolTesting::ProbeTool>("ToolTesting::ProbeTool")
        .property("Gain", &ToolTesting::ProbeTool::Gain, &ToolTesting::ProbeTool::setGain);
}

namespace ToolTesting {
namespace {

using VisionTest::MessageOf;

struct LoggedTool {
    std::shared_ptr<ProbeTool> tool = CreateObject<ProbeTool>();
    std::vector<Tavrin::Brnt::ScopedConnection> connections;

    LoggedTool() {
        auto& log = tool->log;
        connections.emplace_back(
            tool->RunningEvent().Connect([&log] { log.push_back("Running"); }));
        connections.emplace_back(tool->RanEvent().Connect([&log] { log.push_back("Ran"); }));
        connections.emplace_back(
            tool->ChangedEvent().Connect([&log](ChangedEventArgsPtr const& args) {
                log.push_back("Changed " + std::to_string(args->ChangedBits()));
            }));
    }
};

// Each run, however it ends, lies between the two events and leaves a status of its own.
TEST(ToolBase, RunReportsTheResultBetweenTheRunningAndRanEventsAndRethrowsFailures) {
    LoggedTool probe;
    ProbeTool& tool = *probe.tool;
    std::vector<std::string> const runLog{"OnRunning", "Running", "InternalRun",
                                          "OnRan",     "Ran",     "Changed 16"};
    tool.behaviour = [](std::string& message) {
        message = "low contrast";
        return ToolResultConstants_Warning;
    };
    tool.Run();
    EXPECT_EQ(tool.log, runLog);
    auto const warning = tool.RunStatus();
    EXPECT_EQ(warning->ToString(), "Warning: low contrast");

    tool.log.clear();
    tool.behaviour = [](std::string&) -> ToolResultConstants {
        throw OperatorNoInputImageException("Input image is required.");
    };
    EXPECT_THROW(tool.Run(), OperatorNoInputImageException);
    EXPECT_EQ(tool.log, runLog);
    auto status = tool.RunStatus();
    EXPECT_EQ(status->ToString(), "Error: Input image is required.");
    ASSERT_TRUE(status->Exception());
    EXPECT_THROW(status->Exception()->ThrowException(), OperatorNoInputImageException);

    tool.behaviour = [](std::string&) -> ToolResultConstants {
        throw std::runtime_error("plain failure");
    };
    EXPECT_THROW(tool.Run(), std::runtime_error);
    EXPECT_EQ(tool.RunStatus()->ToString(), "Error: plain failure");
    EXPECT_FALSE(tool.RunStatus()->Exception());
    EXPECT_EQ(warning->ToString(), "Warning: low contrast"); // an earlier status stays as it was
}

TEST(ToolBase, DisabledToolDoesNotRun) {
    LoggedTool probe;
    probe.tool->setEnabled(false);
    probe.tool->Run();
    EXPECT_EQ(probe.tool->log, (std::vector<std::string>{"Changed 2", "Changed 16"}));
    EXPECT_EQ(probe.tool->RunStatus()->Result(), ToolResultConstants_NotRun);
}

TEST(ToolBase, RecordsAreRootedAtTheToolAndGetItsFlagWords) {
    auto tool = CreateObject<ProbeTool>();
    tool->setCurrentRecordEnable(3);
    tool->setLastRunRecordEnable(5);
    tool->setDiagFlags(0xffffffffu);
    auto current = tool->CreateCurrentRecord();
    EXPECT_EQ(std::make_tuple(current->Key(), current->Usage(), current->ValueType(),
                              current->Annotation()),
              std::make_tuple(std::string("Probe"), RecordUsageConstants_Tool,
                              rttr::type::get<ProbeTool>(), std::string("current 3")));
    EXPECT_EQ(tool->CreateLastRunRecord()->Annotation(), "last run 5 4294967295");
}

TEST(ToolBase, FinalConstructParentsThePinsThatReachTheToolsProperties) {
    auto tool = CreateObject<ProbeTool>();
    EXPECT_EQ(tool->finalConstructs, 1);
    ToolPinPtr gain = tool->Inputs()->ItemByKey("Gain");
    EXPECT_EQ(gain->Parent(), std::static_pointer_cast<ShareableBase>(tool));
    EXPECT_EQ(gain->Value().get_value<double>(), 1.5);
    gain->setValue(2.5);
    EXPECT_EQ(tool->Gain(), 2.5);

    gain->setPath("Gain.Missing");
    EXPECT_EQ(MessageOf([&] { gain->Value(); }), "The ToolPin path is not valid");
}

TEST(ToolPin, ChecksNameModePathAndType) {
    auto pin = CreateObject<ToolPin>("Result", ToolPinModeConstants_Value, rttr::type::get<int>(),
                                     std::string());
    EXPECT_EQ(MessageOf([&] { pin->setName("2nd"); }), "The ToolPin name is not valid");
    EXPECT_EQ(MessageOf([&] { pin->setMode(static_cast<ToolPinModeConstants>(5)); }),
              "The ToolPin Mode is not valid");
    EXPECT_EQ(MessageOf([&] { pin->setPath("Score"); }),
              "The ToolPin Path cannot be changed in this Mode");
    EXPECT_EQ(MessageOf([&] { pin->setType(rttr::type::get_by_name("No::Such::Type")); }),
              "The ToolPin type cannot be null");
    EXPECT_EQ(MessageOf([&] { pin->setValue(CreateObject<ToolPin>("Other")); }),
              "The value does not fit the ToolPin type int");
    pin->setValue(7);
    pin->setMode(ToolPinModeConstants_Bound);
    EXPECT_EQ(pin->Path(), "Result");
    EXPECT_EQ(MessageOf([&] { pin->setPath("Results..Score"); }), "The ToolPin path is not valid");
}

TEST(ToolBase, CopyKeepsSettingsAndPinsUnderAFreshIdentity) {
    auto tool = CreateObject<ProbeTool>();
    tool->setGain(4.0);
    tool->setEnabled(false);
    tool->setLastRunRecordEnable(9);
    tool->Run();

    auto copy = std::dynamic_pointer_cast<ProbeTool>(tool->CopyBase(ToolCopyModeConstants_All));
    ASSERT_TRUE(copy);
    EXPECT_NE(copy->ID(), tool->ID());
    EXPECT_EQ(std::make_tuple(copy->Name(), copy->Gain(), copy->Enabled(),
                              copy->LastRunRecordEnable(), copy->RunStatus()->Result()),
              std::make_tuple(std::string("Probe"), 4.0, false, 9u, ToolResultConstants_NotRun));
    ToolPinPtr gain = copy->Inputs()->ItemByKey("Gain");
    EXPECT_NE(gain, tool->Inputs()->ItemByKey("Gain"));
    tool->setGain(9.0);
    EXPECT_EQ(gain->Value().get_value<double>(), 4.0); // bound to the copy, not the original
    EXPECT_THROW(copy->Inputs()->Add(CreateObject<ToolPin>("Gain")), ArgumentException);
}

TEST(ToolPinTrackingCollection, LoadOfTwoPinsOfOneNameFailsWithThePinsNameAndType) {
    auto pins = CreateObject<ToolPinTrackingCollection>();
    pins->Add(CreateObject<ToolPin>("PinQ"));
    pins->Add(CreateObject<ToolPin>("PinZ"));
    // Give the second pin the first one's name, as a damaged file would.
    std::string bytes = VisionTest::Saved(pins);
    for (auto at = bytes.find("PinZ"); at != std::string::npos; at = bytes.find("PinZ"))
        bytes.replace(at, 4, "PinQ");
    EXPECT_EQ(MessageOf<SerializationException>(
                  [&] { VisionTest::Loaded<ToolPinTrackingCollection>(bytes); }),
              "Failed to add pin PinQ of type rttr::variant to a ToolPinTrackingCollection");
}

} // namespace
} // namespace ToolTesting
