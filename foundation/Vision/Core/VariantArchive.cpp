#include "Vision/Core/VariantArchive.h"

#include <cstdint>
#include <map>
#include <string>

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Transform2D.h"
#include "Vision/Core/VariantUtils.h"

namespace Tavrin::Vision::Internal::VariantSerialization {

namespace {

struct Archivers {
    CustomVariantArchivers::Saver saver;
    CustomVariantArchivers::Loader loader;
};

std::map<rttr::type, Archivers>& Table() {
    static std::map<rttr::type, Archivers> table;
    return table;
}

[[noreturn]] void ThrowNoArchiver(rttr::type const& type) {
    throw SerializationException("No archiver for variant values of type " +
                                 type.get_name().to_string());
}

} // namespace

void CustomVariantArchivers::Add(rttr::type const& type, Saver saver, Loader loader) {
    Table().insert_or_assign(type, Archivers{saver, loader});
}

void CustomVariantArchivers::Save(cereal::PortableBinaryOutputArchive& archive,
                                  rttr::variant const& value) {
    if (!value.is_valid())
        return;
    rttr::type const type = value.get_type();
    auto const entry = Table().find(type);
    if (entry != Table().end())
        return entry->second.saver(archive, value);
    if (!type.is_enumeration())
        ThrowNoArchiver(type);
    archive(static_cast<std::int32_t>(value.to_int64()));
}

void CustomVariantArchivers::Load(cereal::PortableBinaryInputArchive& archive, rttr::type type,
                                  rttr::variant& value) {
    value = rttr::variant();
    if (!type.is_valid())
        return;
    auto const entry = Table().find(type);
    if (entry != Table().end())
        return entry->second.loader(archive, value);
    if (!type.is_enumeration())
        ThrowNoArchiver(type);
    std::int32_t number = 0;
    archive(number);
    value = Brnt::Internal::VariantUtils::Int32ToEnumVariant(number, type);
}

void CustomVariantArchivers::SaveWithType(cereal::PortableBinaryOutputArchive& archive,
                                          rttr::variant const& value) {
    archive(value.is_valid() ? value.get_type().get_name().to_string() : std::string());
    Save(archive, value);
}

void CustomVariantArchivers::LoadWithType(cereal::PortableBinaryInputArchive& archive,
                                          rttr::variant& value) {
    std::string typeName;
    archive(typeName);
    rttr::type const type = rttr::type::get_by_name(typeName);
    if (!typeName.empty() && !type.is_valid())
        throw SerializationException("Unknown variant type " + typeName);
    Load(archive, type, value);
}

} // namespace Tavrin::Vision::Internal::VariantSerialization

TAVRIN_REGISTRATION(VariantArchive) {
    using Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers;
    CustomVariantArchivers::Register<bool>();
    CustomVariantArchivers::Register<int>();
    CustomVariantArchivers::Register<unsigned int>();
    CustomVariantArchivers::Register<long long>();
    CustomVariantArchivers::Register<double>();
    CustomVariantArchivers::Register<std::string>();
    CustomVariantArchivers::Register<std::shared_ptr<Tavrin::Vision::ITransform2D>>();
    CustomVariantArchivers::Register<std::shared_ptr<Tavrin::Vision::Transform2DLinear>>();
}
