#include "Vision/Core/Record.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/CollectionReflection.h"

namespace Tavrin::Vision {

const long long Record::sf0_;
const long long Record::SfContent;
const long long Record::SfAnnotation;
const long long Record::sfNextSf_;

Record::Record(ObjectCreateAccessToken const& token, std::string const& key,
               rttr::type const& valueType, RecordUsageConstants usage, bool dynamic,
               rttr::variant const& content, std::string const& annotation)
    : Record(token, key, valueType, usage, dynamic, content, annotation, nullptr, 0) {}

Record::Record(ObjectCreateAccessToken const&, std::string const& key, rttr::type const& valueType,
               RecordUsageConstants usage, bool dynamic, rttr::variant const& content,
               std::string const& annotation, std::shared_ptr<IRecordConstructor> constructor,
               int constructorArgument)
    : key_(key)
    , valueType_(valueType)
    , usage_(usage)
    , dynamic_(dynamic)
    , content_(content)
    , annotation_(annotation)
    , constructor_(std::move(constructor))
    , constructorArgument_(constructorArgument)
    , subRecords_(Brnt::CreateObject<RecordCollection>())
    , contentConstructed_(!constructor_)
    , annotationConstructed_(!constructor_)
    , subRecordsConstructed_(!constructor_) {}

rttr::variant Record::Content() {
    EnsureConstructed(contentConstructed_, &IRecordConstructor::ConstructContent);
    return content_;
}

void Record::setContent(rttr::variant const& content) {
    contentConstructed_ = true;
    content_ = content;
    OnChanged_(SfContent);
}

std::string Record::Annotation() {
    EnsureConstructed(annotationConstructed_, &IRecordConstructor::ConstructAnnotation);
    return annotation_;
}

void Record::setAnnotation(std::string const& annotation) {
    annotationConstructed_ = true;
    annotation_ = annotation;
    OnChanged_(SfAnnotation);
}

std::shared_ptr<RecordCollection> Record::SubRecords() {
    EnsureConstructed(subRecordsConstructed_, &IRecordConstructor::ConstructSubRecords);
    return subRecords_;
}

// The part counts as constructed while the constructor runs, so that it can read and set the
// part itself without being called again.
void Record::EnsureConstructed(bool& constructed, ConstructStep step) {
    if (constructed)
        return;
    constructed = true;
    try {
        ((*constructor_).*step)(*this, constructorArgument_);
    } catch (...) {
        constructed = false;
        throw;
    }
}

template <class Archive> void Record::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Record::serialize()");
    std::string valueTypeName = valueType_.get_name().to_string();
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), key_, valueTypeName,
            usage_, dynamic_, content_, annotation_, constructor_, constructorArgument_,
            subRecords_, contentConstructed_, annotationConstructed_, subRecordsConstructed_);
    if constexpr (Archive::is_loading::value) {
        valueType_ = rttr::type::get_by_name(valueTypeName);
        if (!valueType_.is_valid())
            throw SerializationException("Unknown record value type " + valueTypeName);
    }
}

template <class Archive> void RecordCollection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "RecordCollection::serialize()");
    archive(cereal::base_class<KeyedCollectionBase<std::string, RecordPtr>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(Record)
TAVRIN_INSTANTIATE_SERIALIZE(RecordCollection)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Record, "Tavrin::Vision::Record")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::RecordCollection, "Tavrin::Vision::RecordCollection")
TAVRIN_REGISTER_COLLECTION_BASE(Tavrin::Vision::RecordPtr,
                                "Tavrin::Vision::Implementation::CollectionBase<"
                                "Tavrin::Vision::RecordPtr>")

TAVRIN_REGISTRATION(Record) {
    using namespace Tavrin::Vision;
    rttr::registration::enumeration<RecordUsageConstants>("Tavrin::Vision::RecordUsageConstants")(
        rttr::value("None", RecordUsageConstants_None),
        rttr::value("Tool", RecordUsageConstants_Tool),
        rttr::value("Configuration", RecordUsageConstants_Configuration),
        rttr::value("Result", RecordUsageConstants_Result),
        rttr::value("Image", RecordUsageConstants_Image),
        rttr::value("Diagnostic", RecordUsageConstants_Diagnostic),
        rttr::value("Overlay", RecordUsageConstants_Overlay));
    rttr::registration::class_<IRecordConstructor>("Tavrin::Vision::IRecordConstructor");
    rttr::registration::class_<Record>("Tavrin::Vision::Record")
        .property_readonly("Key", &Record::Key)
        .property_readonly("ValueType", &Record::ValueType)
        .property_readonly("Usage", &Record::Usage)
        .property_readonly("Dynamic", &Record::Dynamic)
        .property_readonly("SfContent", &Record::SfContent)
        .property_readonly("SfAnnotation", &Record::SfAnnotation)
        .method("Content", &Record::Content)
        .method("Annotation", &Record::Annotation)
        .method("SubRecords", &Record::SubRecords);
    Implementation::RegisterCollectionReflection<Implementation::CollectionBase<RecordPtr>>(
        "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::RecordPtr>");
    rttr::registration::class_<RecordCollection>("Tavrin::Vision::RecordCollection");
    using Internal::VariantSerialization::CustomVariantArchivers;
    CustomVariantArchivers::Register<RecordPtr>();
    CustomVariantArchivers::Register<RecordCollectionPtr>();
}
