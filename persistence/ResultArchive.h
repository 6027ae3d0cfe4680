#pragma once

#include <Vision/Core/Archive.h>

// The archive member of a result class of Tavrin::Vision::DeepLearning: the version check, the
// base through BaseCast (cereal::virtual_base_class<ShareableBase> or cereal::base_class<...>),
// then the fields in archive order. It also instantiates the member for the framework's two
// archives and registers the class under its full name; the base cast registers the polymorphic
// relation to the base. Used once per class at global scope in the class's source. Loading
// repairs nothing: a result keeps only the ids of its tools, and the runtime tool that loads it
// ties it to live tools again.
#define TAVRIN_DL_ARCHIVED_RESULT(Class, BaseCast, VersionText, ...)                               \
    template <class Archive>                                                                       \
    void Tavrin::Vision::DeepLearning::Class::serialize(Archive& archive, unsigned int version) {  \
        ::Tavrin::Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, VersionText);    \
        archive(BaseCast(this), __VA_ARGS__);                                                      \
    }                                                                                              \
    TAVRIN_INSTANTIATE_SERIALIZE(Tavrin::Vision::DeepLearning::Class)                              \
    CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::Class,                            \
                                   "Tavrin::Vision::DeepLearning::" #Class)
