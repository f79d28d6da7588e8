#include "AtomicFile.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

namespace fs = std::filesystem;

namespace engine {
namespace {

constexpr std::size_t kChunk = 1 << 20;

std::string hexTag() {
    std::random_device rd;
    char text[20];
    std::snprintf(text, sizeof text, "%08x%08x", rd(), rd());
    return text;
}

}  // namespace

AtomicFile::AtomicFile(std::string target) : target_(std::move(target)) {
    fs::path folder = fs::path(target_).parent_path();
    if (folder.empty()) folder = ".";
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        error_ = "folder " + folder.string() + " does not exist";
        return;
    }
    temporary_ = target_ + ".part-" + hexTag();
    file_ = std::fopen(temporary_.c_str(), "wb");
    if (!file_) {
        error_ = std::string("cannot create ") + temporary_ + ": " + std::strerror(errno);
        return;
    }
    buffer_.reserve(kChunk);
}

AtomicFile::~AtomicFile() {
    if (file_) {
        std::fclose(file_);
        std::remove(temporary_.c_str());
    }
}

void AtomicFile::write(const char* text, std::size_t n) {
    if (n >= kChunk) {
        flush();
        put(text, n);
        return;
    }
    buffer_.append(text, n);
    if (buffer_.size() > kChunk) flush();
}

void AtomicFile::number(double value, int decimals) {
    char digits[64];
    auto result = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    write(digits, static_cast<std::size_t>(result.ptr - digits));
}

void AtomicFile::integer(std::size_t value) {
    char digits[32];
    auto result = std::to_chars(digits, digits + sizeof digits, value);
    write(digits, static_cast<std::size_t>(result.ptr - digits));
}

void AtomicFile::flush() {
    put(buffer_.data(), buffer_.size());
    buffer_.clear();
}

void AtomicFile::put(const char* data, std::size_t size) {
    if (ok() && size > 0 && std::fwrite(data, 1, size, file_) != size) fail(errno);
}

// Keeps the first failure's reason.
void AtomicFile::fail(int savedErrno) {
    if (failed_) return;
    failed_ = true;
    savedErrno_ = savedErrno;
}

bool AtomicFile::commit() {
    flush();
    if (!file_) return false;
    if (ok() && (std::fflush(file_) != 0 || ::fsync(fileno(file_)) != 0)) fail(errno);
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    if (!closed) fail(errno);
    if (!failed_) {
        std::error_code ec;
        fs::rename(temporary_, target_, ec);
        if (ec) fail(ec.value());
    }
    if (failed_) {
        std::remove(temporary_.c_str());
        error_ = std::string("cannot write ") + target_ + ": " + std::strerror(savedErrno_);
        return false;
    }
    return true;
}

bool WriteFileAtomically(const std::string& target, const std::string& bytes, std::string* error) {
    AtomicFile file(target);
    file.write(bytes);
    const bool written = file.commit();
    if (!written && error) *error = file.error();
    return written;
}

}  // namespace engine
