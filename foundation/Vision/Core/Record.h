#pragma once

#include <memory>
#include <string>

#include <rttr/type>

#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/KeyedCollectionBase.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

// What a record is for, as a host displays it.
enum RecordUsageConstants : int {
    RecordUsageConstants_None = 0,
    // The root record of a tool.
    RecordUsageConstants_Tool = 1,
    RecordUsageConstants_Configuration = 2,
    RecordUsageConstants_Result = 3,
    // An image to show.
    RecordUsageConstants_Image = 4,
    RecordUsageConstants_Diagnostic = 5,
    // Graphics drawn over the image of the parent record.
    RecordUsageConstants_Overlay = 6,
};

class Record;
class RecordCollection;

// Supplies the parts of a record on demand; argument is the one the record was given.
class IRecordConstructor : public virtual Brnt::IObject {
public:
    virtual void ConstructAnnotation(Record& record, int argument) = 0;
    virtual void ConstructContent(Record& record, int argument) = 0;
    virtual void ConstructSubRecords(Record& record, int argument) = 0;

    RTTR_ENABLE(IObject)
};

// One node of the tree of things a tool shows: a keyed content of a declared type, an annotation
// and sub-records. A record with a constructor asks it for each of the three parts when that part
// is first read, once; a part set explicitly before is not asked for. A constructor that throws
// is asked again at the next read.
class Record : public virtual ChangedEventShareableBase {
public:
    static const long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static const long long SfContent = sf0_;
    static const long long SfAnnotation = sf0_ << 1;
    static const long long sfNextSf_ = sf0_ << 2;

    Record(ObjectCreateAccessToken const& token, std::string const& key,
           rttr::type const& valueType, RecordUsageConstants usage, bool dynamic,
           rttr::variant const& content, std::string const& annotation);
    Record(ObjectCreateAccessToken const& token, std::string const& key,
           rttr::type const& valueType, RecordUsageConstants usage, bool dynamic,
           rttr::variant const& content, std::string const& annotation,
           std::shared_ptr<IRecordConstructor> constructor, int constructorArgument);

    TAVRIN_SHARED_FROM_THIS(Record)

    std::string Key() const { return key_; }
    rttr::type ValueType() const { return valueType_; }
    RecordUsageConstants Usage() const { return usage_; }
    // Whether the content is made by a constructor rather than given.
    bool Dynamic() const { return dynamic_; }
    std::shared_ptr<IRecordConstructor> RecordConstructor() const { return constructor_; }
    int ConstructorArgument() const { return constructorArgument_; }

    virtual rttr::variant Content();
    virtual void setContent(rttr::variant const& content);
    virtual std::string Annotation();
    virtual void setAnnotation(std::string const& annotation);
    virtual std::shared_ptr<RecordCollection> SubRecords();

private:
    Record() = default;

    using ConstructStep = void (IRecordConstructor::*)(Record&, int);
    void EnsureConstructed(bool& constructed, ConstructStep step);

    // Parts are saved as they stand, with what is still to be constructed.
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::string key_;
    rttr::type valueType_ = rttr::type::get<void>();
    RecordUsageConstants usage_ = RecordUsageConstants_None;
    bool dynamic_ = false;
    rttr::variant content_;
    std::string annotation_;
    std::shared_ptr<IRecordConstructor> constructor_;
    int constructorArgument_ = 0;
    std::shared_ptr<RecordCollection> subRecords_;
    bool contentConstructed_ = true;
    bool annotationConstructed_ = true;
    bool subRecordsConstructed_ = true;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using RecordPtr = std::shared_ptr<Record>;

// Sub-records, found by their keys; keys may repeat.
class RecordCollection : public Implementation::KeyedCollectionBase<std::string, RecordPtr> {
public:
    explicit RecordCollection(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(RecordCollection)

protected:
    std::string KeyOf(RecordPtr const& record) const override { return record->Key(); }

private:
    RecordCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(Implementation::KeyedCollectionBase<std::string, RecordPtr>)
};

using RecordCollectionPtr = std::shared_ptr<RecordCollection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Record, 1)
TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::RecordCollection, 1)
