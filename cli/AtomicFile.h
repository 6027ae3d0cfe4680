#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace TavrinCli {

// A file that appears whole or not at all: it is written to a temporary file in the target's
// folder, and only Commit renames it over the target. Without Commit the temporary file goes.
class AtomicFile {
public:
    explicit AtomicFile(std::filesystem::path target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    std::ostream& Stream() { return stream_; }
    void Commit();

private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::ofstream stream_;
    bool committed_ = false;
};

void WriteFileAtomically(const std::filesystem::path& target,
                         const std::vector<unsigned char>& bytes);

} // namespace TavrinCli
