#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <rttr/type>

#include <Vision/Core/Meta.h>
#include <Vision/Core/TypeRegistration.h>

#include "ResultTestSupport.h"
#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace ReflectionTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::TypeRegistration::ClassType;
using Tavrin::Brnt::TypeRegistration::PropertyType;
using Tavrin::Brnt::TypeRegistration::TypeSubCategory;
using Names = std::vector<std::string>;
using SubCategory = std::optional<TypeSubCategory>;

std::string const Namespace = "Tavrin::Vision::DeepLearning::";

rttr::type TypeNamed(std::string const& name) {
    return rttr::type::get_by_name(Namespace + name);
}

// What a host does with a value it knows nothing about: look at the dynamic class of the object
// the value holds, through the shared pointer.
rttr::type ClassOf(rttr::variant const& object) {
    rttr::instance const held(object);
    rttr::instance const wrapped = held.get_wrapped_instance();
    return (wrapped.is_valid() ? wrapped : held).get_derived_type();
}

rttr::variant Read(rttr::variant const& object, char const* property) {
    return ClassOf(object).get_property(property).get_value(object);
}

rttr::variant Item(rttr::variant const& collection, int index) {
    return ClassOf(collection).get_method("Item").invoke(collection, index);
}

Names PropertyNames(rttr::type const& type) {
    Names names;
    for (rttr::property const& property : type.get_properties())
        names.push_back(property.get_name().to_string());
    return names;
}

// The tool's workspace clone must close before the engine forgets the file.
class ReflectedRuntimeTool : public ThreeKindsOperatorTest {
protected:
    void TearDown() override {
        tool_ = rttr::variant();
        ThreeKindsOperatorTest::TearDown();
    }

    rttr::variant tool_;
};

TEST_F(ReflectedRuntimeTool, HostBrowsesAndEditsTheToolTreeByNameOnly) {
    rttr::type const toolType = TypeNamed("DLRuntimeTool");
    tool_ = toolType.create();
    ASSERT_TRUE(tool_.is_valid());
    toolType.get_method("LoadWorkspace").invoke(tool_, std::string(File));
    EXPECT_TRUE(toolType.get_property("LastRunRecordDiagEnable")
                    .set_value(tool_, DLLastRunRecordConstants::None));
    EXPECT_EQ(Read(tool_, "LastRunRecordDiagEnable").get_value<DLLastRunRecordConstants>(),
              DLLastRunRecordConstants::None);

    auto const workspace = Read(Read(tool_, "DeepLearningOperator"), "Workspace");
    EXPECT_EQ(Read(workspace, "SourceFile").to_string(), File);
    auto const stream = Item(Read(workspace, "Streams"), 0);
    EXPECT_EQ(Read(stream, "Name").to_string(), "main");
    auto const blue = Item(Read(stream, "Tools"), 2);
    rttr::type const blueType = ClassOf(blue);
    ASSERT_EQ(blueType.get_name(), Namespace + "DLBlueReadToolRuntimeParams");
    EXPECT_EQ(Read(blue, "Name").to_string(), "blue");

    ToolTest::FlagLog log(*blue.get_value<DLToolRuntimeParamsPtr>());
    EXPECT_TRUE(blueType.get_property("Threshold").set_value(blue, 0.5));
    EXPECT_TRUE(blueType.get_property("FeatureFilter").set_value(blue, std::string("width>2")));
    EXPECT_EQ(Read(blue, "Threshold").to_double(), 0.5);
    EXPECT_EQ(Read(blue, "FeatureFilter").to_string(), "width>2");
    auto flag = [&](char const* name) {
        return blueType.get_property(name).get_value(rttr::instance()).get_value<long long>();
    };
    EXPECT_EQ(log.words(), (ToolTest::Words{flag("SfThreshold"), flag("SfFeatureFilter")}));

    EXPECT_EQ(
        VisionTest::MessageOf([&] { blueType.get_property("Precision").set_value(blue, 1.5); }),
        "Precision must be between 0.000000 and 1.000000");
    EXPECT_EQ(log.words().size(), 2u);
}

TEST(ReflectionProperties, ReadOnlyOrWritableAsEachClassDeclares) {
    std::tuple<char const*, char const*, bool> const cases[] = {
        {"DLHdmGreenToolRuntimeParams", "Threshold", false},
        {"DLHdmGreenToolRuntimeParams", "MinimumThreshold", true},
        {"DLQuickRedToolRuntimeParams", "RegionFilter", false},
        {"DLFocusedModeRedToolRuntimeParams", "Iterations", false},
        {"DLToolRuntimeParams", "ChildTools", true},
        {"DLToolRuntimeParams", "AddImageRecords", false},
        {"DLOperator", "Stream", false},
        {"DLWorkspace", "Streams", true},
        {"DLRuntimeTool", "InputImage", false},
        {"DLRuntimeTool", "Results", true},
        {"DLResultView", "RefPose", true},
        {"DLResultView", "Pose", true},
        {"DeepLearningException", "Message", true},
    };
    for (auto const& [type, name, readOnly] : cases) {
        rttr::property const property = TypeNamed(type).get_property(name);
        ASSERT_TRUE(property.is_valid()) << type << "::" << name;
        EXPECT_EQ(property.is_readonly(), readOnly) << type << "::" << name;
    }
}

// Inherited members come first, then the class's own properties and its flags, each in order.
TEST(ReflectionProperties, SubclassesListTheirBasesMembersFirst) {
    EXPECT_EQ(PropertyNames(TypeNamed("DLBlueLayoutModel")), (Names{"Name", "Enable", "SfEnable"}));
    EXPECT_EQ(PropertyNames(TypeNamed("DLHdmRedToolRuntimeParams")),
              (Names{"Name", "Type", "Id", "ChildTools", "ShowRegion", "AddImageRecords",
                     "SfGraphicsSettings", "SfShowRegion", "SfAddImageRecords", "UpperThreshold",
                     "LowerThreshold", "RegionFilter", "DownsamplingSize", "ShowGraphics",
                     "SfLowerThreshold", "SfUpperThreshold", "SfRegionFilter", "SfDownsamplingSize",
                     "SfShowGraphics"}));
}

// The same name has its own value in sibling classes; counters of the bits are not shown.
TEST(ReflectionFlags, ConstantsAreReadOnlyValuesMarkedAsFlags) {
    std::tuple<char const*, char const*, long long> const cases[] = {
        {"DLBlueToolRuntimeParams", "SfThreshold", 16},
        {"DLBlueReadToolRuntimeParams", "SfThreshold", 8},
        {"DLToolRuntimeParams", "SfGraphicsSettings", 1},
        {"DLBlueNodeModel", "SfOccurrences", 4},
        {"DLRuntimeTool", "SfLastRunRecordDiagEnable", 4096},
        {"DLOperator", "SfStream", 4},
        {"DLStream", "SfToolsGraphicsChanged", 1},
    };
    for (auto const& [type, name, value] : cases) {
        rttr::property const constant = TypeNamed(type).get_property(name);
        ASSERT_TRUE(constant.is_valid()) << type << "::" << name;
        EXPECT_TRUE(constant.is_readonly());
        // Read as a host without our headers would: through RTTR's ordinary conversions.
        rttr::variant const read = constant.get_value(rttr::instance());
        bool converted = false;
        EXPECT_EQ(read.to_int64(&converted), value) << name;
        EXPECT_TRUE(converted) << name;
        EXPECT_EQ(read.convert<long long>(), value) << name;
        EXPECT_EQ(read.to_uint64(), static_cast<std::uint64_t>(value)) << name;
        EXPECT_EQ(read.to_double(), static_cast<double>(value)) << name;
        EXPECT_EQ(read.to_string(), std::to_string(value)) << name;
        EXPECT_TRUE(read.to_bool()) << name;
        read.to_int8(&converted);
        EXPECT_EQ(converted, value <= 127) << name << " does not fit in 8 bits";
        EXPECT_EQ(constant.get_metadata("PropertyAccessorType").get_value<PropertyType>(),
                  PropertyType::ChangeFlag);
    }
    EXPECT_FALSE(
        TypeNamed("DLBlueModel").get_property("Name").get_metadata("PropertyAccessorType"));
    EXPECT_FALSE(TypeNamed("DLWorkspace").get_property("SfOutOfDate").is_valid());
    EXPECT_FALSE(TypeNamed("DLOperator").get_property("sf0_").is_valid());
    EXPECT_FALSE(TypeNamed("DLOperator").get_property("sfNextSf_").is_valid());
}

// What a host sorts types by: kind, library, header path and subcategory, the last two optional.
template <class Described>
void ExpectMetadata(Described const& described, ClassType kind, char const* headerPath,
                    SubCategory subCategory) {
    EXPECT_EQ(described.get_metadata("ClassType").template get_value<ClassType>(), kind);
    EXPECT_EQ(described.get_metadata("LibraryExport").to_string(), "Tavrin.Vision.DeepLearning");
    auto const header = described.get_metadata("HeaderPath");
    EXPECT_EQ(header.is_valid() ? header.to_string() : "(none)", headerPath);
    auto const category = described.get_metadata("TypeSubCategory");
    EXPECT_EQ(category.is_valid(), subCategory.has_value());
    if (subCategory) {
        EXPECT_EQ(category.template get_value<TypeSubCategory>(), *subCategory);
    }
}

// Exceptions and enumerations keep the header paths hosts already match on, lower-case folder
// and all.
TEST(ReflectionEnumerations, NamesInDeclaredOrderWithTheirValues) {
    std::tuple<char const*, char const*, SubCategory, char const*> const cases[] = {
        {"DLLastRunRecordConstants", "All=-1 InputImageDeepCopy=2 InputImageByReference=1 None=0 ",
         TypeSubCategory::Constants, "<vision/DeepLearning/DeepLearningEnums>"},
        {"DLResultFeatureMetricsType", "Total=2 Avg=1 Features=0 ", std::nullopt,
         "<vision/DeepLearning/DeepLearningEnums>"},
        {"DeepLearningExceptionCodes", "", std::nullopt,
         "<vision/DeepLearning/DeepLearningExceptions>"},
    };
    for (auto const& [name, values, subCategory, headerPath] : cases) {
        SCOPED_TRACE(name);
        rttr::enumeration const enumeration = TypeNamed(name).get_enumeration();
        ASSERT_TRUE(enumeration.is_valid());
        std::string text;
        for (auto const& value : enumeration.get_names())
            text += value.to_string() + "=" +
                    std::to_string(enumeration.name_to_value(value).to_int()) + " ";
        EXPECT_EQ(text, values);
        ExpectMetadata(enumeration, ClassType::Enumeration, headerPath, subCategory);
    }
}

TEST(ReflectionMetadata, ClassesCarryTheirKindHeaderAndLibrary) {
    std::tuple<char const*, ClassType, char const*, SubCategory> const cases[] = {
        {"DLToolRuntimeParams", ClassType::BaseClass, "<Vision/DeepLearning/DLToolRuntimeParams>",
         std::nullopt},
        {"DLRuntimeTool", ClassType::Class, "<Vision/DeepLearning/DLRuntimeTool>", std::nullopt},
        {"Implementation::Internal::TestHelpers::TestHelper", ClassType::Class,
         "<Vision/DeepLearning/Implementation/Internal/TestHelpers/TestHelper>", std::nullopt},
        {"DLResultMatch", ClassType::BaseClass, "<Vision/DeepLearning/DLResultMatch>",
         std::nullopt},
        {"DLResultViewReadOnlyCollection", ClassType::Class,
         "<Vision/DeepLearning/DLResultViewReadOnlyCollection>", std::nullopt},
        {"DLStreamReadOnlyCollection", ClassType::Class,
         "<Vision/DeepLearning/DLStreamReadOnlyCollection>", TypeSubCategory::Collection},
        {"DeepLearningException", ClassType::BaseClass,
         "<vision/DeepLearning/DeepLearningExceptions>", std::nullopt},
        {"DeepLearningInitializeException", ClassType::Class,
         "vision/DeepLearning/DeepLearningExceptions", std::nullopt},
        {"Implementation::IReadOnlyCollectionOfDLBlueModelPtr", ClassType::Interface, "(none)",
         TypeSubCategory::Collection},
        {"Implementation::ReadOnlyCollectionOfDLBlueModelPtr", ClassType::BaseClass,
         "vision/DeepLearning/Implementation/InstantiationsForDLBlueModel",
         TypeSubCategory::Collection},
    };
    for (auto const& [name, kind, headerPath, subCategory] : cases) {
        SCOPED_TRACE(name);
        rttr::type const type = TypeNamed(name);
        ASSERT_TRUE(type.is_valid());
        ExpectMetadata(type, kind, headerPath, subCategory);
    }
}

TEST(ReflectionConverters, BasePointersReachTheRealClassAndItsBasesOnly) {
    auto const tool = ToolTest::MakeTool<DLFocusedModeRedToolRuntimeParams>();
    rttr::variant const held{std::shared_ptr<Tavrin::Vision::ShareableBase>(tool)};

    bool ok = false;
    auto const same = held.convert<std::shared_ptr<DLFocusedModeRedToolRuntimeParams>>(&ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(same, tool);
    EXPECT_EQ(tool.use_count(), 3); // shares ownership with the held pointer
    EXPECT_EQ(held.convert<DLToolRuntimeParamsPtr>(&ok), tool);
    EXPECT_TRUE(ok);
    // Converters pair a class with each of its bases, never two bases.
    EXPECT_FALSE(held.can_convert<std::shared_ptr<Tavrin::Vision::IChangedEvent>>());
    rttr::variant const own{tool};
    auto const asEvent = own.convert<std::shared_ptr<Tavrin::Vision::IChangedEvent>>(&ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(asEvent.get(), static_cast<Tavrin::Vision::IChangedEvent*>(tool.get()));

    ok = true;
    EXPECT_FALSE(held.convert<std::shared_ptr<DLHdmRedToolRuntimeParams>>(&ok));
    EXPECT_FALSE(ok);

    ok = true;
    rttr::variant const empty{std::shared_ptr<Tavrin::Vision::ShareableBase>()};
    EXPECT_FALSE(empty.convert<std::shared_ptr<DLFocusedModeRedToolRuntimeParams>>(&ok));
    EXPECT_FALSE(ok);
}

TEST(ReflectionCollections, FakePropertiesListItemsThroughTheInterfaceItem) {
    auto const first = ToolTest::MakeModel<DLBlueNodeModel>("n");
    auto const second = ToolTest::MakeModel<DLBlueLayoutModel>("l");
    auto const models = Tavrin::Brnt::CreateObject<DLBlueModelReadOnlyCollection>(
        std::vector<DLBlueModelPtr>{first, second});

    auto const properties = models->GetFakeProperties();
    ASSERT_EQ(properties->size(), 2u);
    EXPECT_EQ((*properties)[0]->GetValue(*models).get_value<DLBlueModelPtr>(), first);
    EXPECT_EQ((*properties)[1]->GetValue(*models).get_value<DLBlueModelPtr>(), second);

    bool ok = false;
    rttr::variant const counted{std::shared_ptr<Tavrin::Brnt::ICountable>(models)};
    EXPECT_EQ(counted.convert<std::shared_ptr<DLBlueModelReadOnlyCollection>>(&ok), models);
    EXPECT_TRUE(ok);

    rttr::method const item =
        TypeNamed("Implementation::IReadOnlyCollectionOfDLBlueModelPtr").get_method("Item");
    ASSERT_EQ(item.get_parameter_infos().size(), 1u);
    EXPECT_EQ(item.get_parameter_infos().begin()->get_name().to_string(), "index");
    EXPECT_EQ(item.get_return_type(), rttr::type::get<DLBlueModelPtr>());
}

} // namespace

} // namespace ReflectionTesting
