#include "AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

#include "Failure.h"

namespace TavrinCli {
namespace {

// A fresh name beside the target, so that the rename stays on one file system.
std::filesystem::path MakeTemporaryBeside(const std::filesystem::path& target) {
    const std::filesystem::path folder =
        target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    // mkstemp turns the last six letters of the name into a unique suffix.
    std::string const uniqueSuffix(6, 'X');
    std::string pattern =
        (folder / ("." + target.filename().string() + "." + uniqueSuffix)).string();
    const int descriptor = mkstemp(pattern.data());
    if (descriptor < 0)
        throw CommandError("cannot write " + target.string() + ": " + std::strerror(errno));
    // mkstemp makes the file private; the result gets the usual permissions of a new file.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(descriptor, 0666 & ~mask);
    close(descriptor);
    return pattern;
}

} // namespace

AtomicFile::AtomicFile(std::filesystem::path target)
    : target_(std::move(target))
    , temporary_(MakeTemporaryBeside(target_))
    , stream_(temporary_, std::ios::binary | std::ios::trunc) {
    if (!stream_)
        throw CommandError("cannot write " + target_.string());
}

AtomicFile::~AtomicFile() {
    if (committed_)
        return;
    stream_.close();
    std::error_code ignored;
    std::filesystem::remove(temporary_, ignored);
}

void AtomicFile::Commit() {
    stream_.close();
    if (stream_.fail())
        throw CommandError("cannot write " + target_.string());
    std::error_code error;
    std::filesystem::rename(temporary_, target_, error);
    if (error)
        throw CommandError("cannot write " + target_.string() + ": " + error.message());
    committed_ = true;
}

void WriteFileAtomically(const std::filesystem::path& target,
                         const std::vector<unsigned char>& bytes) {
    AtomicFile file(target);
    file.Stream().write(reinterpret_cast<const char*>(bytes.data()),
                        static_cast<std::streamsize>(bytes.size()));
    file.Commit();
}

} // namespace TavrinCli
