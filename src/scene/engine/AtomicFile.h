// Files written whole or not at all. The bytes go to a temporary file
// beside the target ("<target>.part-<random hex>"), which is flushed to disk
// and renamed over the target only when complete; on any failure it is
// removed and the target stays as it was.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace engine {

// Buffered writer of one such file.
class AtomicFile {
public:
    explicit AtomicFile(std::string target);
    ~AtomicFile();  // removes the temporary file unless committed
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // The temporary file is open and every write so far went through.
    bool ok() const { return file_ != nullptr && !failed_; }
    void write(const char* text, std::size_t n);
    void write(const std::string& text) { write(text.data(), text.size()); }
    void number(double value, int decimals);  // fixed notation
    void integer(std::size_t value);
    // Puts the file in place; false (and the temporary file gone) on failure.
    bool commit();
    // Why the file could not be written, "" while nothing went wrong.
    const std::string& error() const { return error_; }

private:
    void flush();
    void put(const char* data, std::size_t size);
    void fail(int savedErrno);

    std::string target_;
    std::string temporary_;
    std::FILE* file_ = nullptr;
    std::string buffer_;
    bool failed_ = false;
    int savedErrno_ = 0;  // errno of the first failure
    std::string error_;
};

// Writes `bytes` as `target` in one go, as above. On failure returns false
// and, when `error` is given, says why there.
bool WriteFileAtomically(const std::string& target, const std::string& bytes, std::string* error);

}  // namespace engine
