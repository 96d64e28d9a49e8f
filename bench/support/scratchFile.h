// Files that benchmarks read.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

namespace rfu::bench {

/// A file in the scratch folder ($TMPDIR, which the measurement sets) that goes with the object.
class ScratchFile {
public:
    ScratchFile(const std::string& name, std::string_view content) : name_(folder() + '/' + name) {
        std::FILE* const file = std::fopen(name_.c_str(), "wb");
        const bool written = file != nullptr &&
                             std::fwrite(content.data(), 1, content.size(), file) == content.size();
        if (file == nullptr || std::fclose(file) != 0 || !written) {
            throw std::runtime_error(name_ + " cannot be written");
        }
    }
    ~ScratchFile() { std::remove(name_.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& name() const { return name_; }

private:
    static std::string folder() {
        const char* const folder = std::getenv("TMPDIR");
        return folder == nullptr ? "/tmp" : folder;
    }

    std::string name_;
};

}  // namespace rfu::bench
