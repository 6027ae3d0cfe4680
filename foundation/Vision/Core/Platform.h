#pragma once

#include <string>

// Loader and shutdown services of the platform. Failures come back as negative statuses.
extern "C" {
int tsys_loadLibrary(wchar_t const* fileName, void** handle);
int tsys_getProcAddress(void* handle, char const* symbol, void** address);
// Keeps the callback and its context; each runs once at normal process exit, before the
// libraries' static objects are destroyed.
int tsys_shutdown_registerEarly(long (*callback)(void*), void* context);
// Runs the registered callbacks now, in registration order, and forgets them.
void tsys_shutdown_runEarly();
}

namespace Tavrin::Vision::Private {

namespace PalUtils {
// A fresh random (version 4) GUID in the 8-4-4-4-12 lower-case form.
std::string NewGuid();
} // namespace PalUtils

// UTF-8 form of a wide text.
std::string NarrowText(std::wstring const& text);

} // namespace Tavrin::Vision::Private
