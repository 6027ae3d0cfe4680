#include "Vision/Core/Platform.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <utility>
#include <vector>

namespace {

struct ShutdownCallback {
    long (*callback)(void*);
    void* context;
};

struct ShutdownRegistry {
    std::mutex mutex;
    std::vector<ShutdownCallback> callbacks;
    bool atExitInstalled = false;
};

ShutdownRegistry& Registry() {
    static ShutdownRegistry registry;
    return registry;
}

void RunShutdownAtExit() {
    tsys_shutdown_runEarly();
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

} // namespace

extern "C" {

int tsys_loadLibrary(wchar_t const* fileName, void** handle) {
    std::string const narrow = Tavrin::Vision::Private::NarrowText(fileName);
    *handle = dlopen(narrow.c_str(), RTLD_NOW | RTLD_LOCAL);
    return *handle ? 0 : -1;
}

int tsys_getProcAddress(void* handle, char const* symbol, void** address) {
    *address = dlsym(handle, symbol);
    return *address ? 0 : -1;
}

int tsys_shutdown_registerEarly(long (*callback)(void*), void* context) {
    ShutdownRegistry& registry = Registry();
    std::lock_guard<std::mutex> lock(registry.mutex);
    // The registry was constructed first, so it outlives this handler at exit.
    if (!registry.atExitInstalled) {
        if (std::atexit(RunShutdownAtExit) != 0)
            return -1;
        registry.atExitInstalled = true;
    }
    registry.callbacks.push_back({callback, context});
    return 0;
}

void tsys_shutdown_runEarly() {
    ShutdownRegistry& registry = Registry();
    std::vector<ShutdownCallback> callbacks;
    {
        std::lock_guard<std::mutex> lock(registry.mutex);
        callbacks.swap(registry.callbacks);
    }
    for (ShutdownCallback const& entry : callbacks)
        entry.callback(entry.context);
}
}

namespace Tavrin::Vision::Private {

// Every run names its sample with one, so it is formatted by hand rather than by snprintf.
std::string PalUtils::NewGuid() {
    thread_local std::mt19937_64 generator{std::random_device{}()};
    unsigned char bytes[16];
    for (int half = 0; half < 2; ++half) {
        std::uint64_t bits = generator();
        for (int i = 0; i < 8; ++i, bits >>= 8)
            bytes[half * 8 + i] = static_cast<unsigned char>(bits);
    }
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    static char const digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(36);
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    return text;
}

std::string NarrowText(std::wstring const& text) {
    std::string out;
    out.reserve(text.size());
    for (wchar_t c : text)
        AppendUtf8(out, static_cast<char32_t>(c));
    return out;
}

} // namespace Tavrin::Vision::Private
