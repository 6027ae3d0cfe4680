#pragma once

#include <exception>
#include <memory>
#include <string>

#include "Vision/Core/Object.h"

namespace Tavrin::Brnt {

class IException : public virtual IObject {
public:
    virtual std::shared_ptr<IException> CloneException() const = 0;
    [[noreturn]] virtual void ThrowException() const = 0;

    RTTR_ENABLE(IObject)
};

} // namespace Tavrin::Brnt

namespace Tavrin::Vision {

// The foundation's numbering; callers compare codes numerically, so the enumeration is plain.
enum VisionExceptionCodes : int {
    VisionExceptionCodes_Unknown = 0,
    VisionExceptionCodes_Argument = 1,
    VisionExceptionCodes_InternalError = 2,
    VisionExceptionCodes_FileOpen = 3,
    VisionExceptionCodes_Serialization = 4,
    VisionExceptionCodes_OperatorNoInputImage = 5,
    VisionExceptionCodes_OperatorNotTrained = 6,
    VisionExceptionCodes_InvalidCollectionIndex = 7,
    VisionExceptionCodes_NotInvertible = 8,
    VisionExceptionCodes_LibraryLoad = 9,
    VisionExceptionCodes_ImageBadType = 18,
};

class VisionException : public std::exception, public virtual Brnt::IException {
public:
    VisionException(VisionExceptionCodes code, std::string const& message);
    VisionException(VisionException const&) = default;
    VisionException& operator=(VisionException const&) = default;

    VisionExceptionCodes Code() const { return code_; }
    std::string Message() const { return message_; }
    virtual std::string ToString() const { return message_; }
    char const* what() const noexcept override { return message_.c_str(); }

    std::shared_ptr<Brnt::IException> CloneException() const override;
    [[noreturn]] void ThrowException() const override;

private:
    VisionExceptionCodes code_;
    std::string message_;

    RTTR_ENABLE(IException)
};

// Gives an exception class its clone and rethrow with its own dynamic class, once for all.
template <class Derived, class Base> class ClonableException : public Base {
public:
    using Base::Base;

    std::shared_ptr<Brnt::IException> CloneException() const override {
        return std::make_shared<Derived>(static_cast<Derived const&>(*this));
    }
    [[noreturn]] void ThrowException() const override {
        throw static_cast<Derived const&>(*this);
    }
};

// One message-only exception class of the family with its fixed code.
#define TAVRIN_MESSAGE_EXCEPTION(Name, CodeValue)                                                  \
    class Name : public ClonableException<Name, VisionException> {                                 \
    public:                                                                                        \
        explicit Name(std::string const& message) : ClonableException(CodeValue, message) {}       \
        RTTR_ENABLE(VisionException)                                                               \
    };

// Exceptions that take a code behind their message.
#define TAVRIN_CODED_EXCEPTION(Name)                                                               \
    class Name : public ClonableException<Name, VisionException> {                                 \
    public:                                                                                        \
        Name(std::string const& message, VisionExceptionCodes code)                                \
            : ClonableException(code, message) {}                                                  \
        RTTR_ENABLE(VisionException)                                                               \
    };

TAVRIN_MESSAGE_EXCEPTION(ArgumentException, VisionExceptionCodes_Argument)
TAVRIN_MESSAGE_EXCEPTION(OperatorNoInputImageException, VisionExceptionCodes_OperatorNoInputImage)
TAVRIN_MESSAGE_EXCEPTION(OperatorNotTrainedException, VisionExceptionCodes_OperatorNotTrained)
TAVRIN_MESSAGE_EXCEPTION(FileOpenException, VisionExceptionCodes_FileOpen)
TAVRIN_MESSAGE_EXCEPTION(SerializationException, VisionExceptionCodes_Serialization)
TAVRIN_CODED_EXCEPTION(InternalErrorException)
TAVRIN_CODED_EXCEPTION(ImageException)

#undef TAVRIN_MESSAGE_EXCEPTION
#undef TAVRIN_CODED_EXCEPTION

namespace Strings {
extern char const E_TavImage_BadType[];
}

namespace Implementation::Internal {
[[noreturn]] void ThrowInvalidCollectionIndexException();
}

} // namespace Tavrin::Vision
