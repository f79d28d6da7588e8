// ReadModelWithAssimp, with the read isolated in a child process.
//
// Assimp 5.2 dereferences bad indices in some damaged files (a COLLADA
// <float_array> without its count, a COB chunk with a broken id) and dies
// with SIGSEGV, and others send it round a loop for good. The read therefore
// runs in a forked child that sends the outcome back through a pipe; a child
// that dies, or runs past its time, costs one log line.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "AssimpAdapter.h"
#include "AssimpReadOutcome.h"
#include "EngineState.h"
#include "LogText.h"

namespace engine {
namespace {

constexpr std::uint64_t kOutcomeMagic = 0x5A56'4153'5349'4D50ull;  // start and end marks

using Clock = std::chrono::steady_clock;

double readTimeLimitSeconds(const std::string& path) {
    if (assimpReadHooks().timeLimitSeconds > 0) return assimpReadHooks().timeLimitSeconds;
    struct stat st {};
    const double megabytes = ::stat(path.c_str(), &st) == 0 ? static_cast<double>(st.st_size) / (1 << 20) : 0;
    return kAssimpReadBaseSeconds + kAssimpReadSecondsPerMegabyte * megabytes;
}

// Moves all `size` bytes at `p` through `io` (one read or write on the
// pipe), across interruptions and partial transfers; false when the pipe
// fails or closes first.
template <typename Io, typename Byte>
bool transferAll(Io io, Byte* p, std::size_t size) {
    while (size > 0) {
        const ssize_t n = io(p, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        p += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

class PipeWriter {
public:
    explicit PipeWriter(int fd) : fd_(fd) { buffer_.reserve(kChunk); }
    void raw(const void* data, std::size_t size) {
        const char* p = static_cast<const char*>(data);
        if (size >= kChunk) {
            flush();
            put(p, size);
            return;
        }
        if (buffer_.size() + size > kChunk) flush();
        buffer_.insert(buffer_.end(), p, p + size);
    }
    void u64(std::uint64_t v) { raw(&v, sizeof v); }
    void text(const std::string& s) {
        u64(s.size());
        raw(s.data(), s.size());
    }
    template <typename T>
    void array(const std::vector<T>& v) {
        u64(v.size());
        raw(v.data(), v.size() * sizeof(T));
    }
    bool flush() {
        put(buffer_.data(), buffer_.size());
        buffer_.clear();
        return ok_;
    }

private:
    static constexpr std::size_t kChunk = 1 << 20;
    void put(const char* p, std::size_t size) {
        ok_ = ok_ && transferAll([this](const char* at, std::size_t n) { return ::write(fd_, at, n); }, p, size);
    }
    int fd_;
    bool ok_ = true;
    std::vector<char> buffer_;
};

// Reads the child's outcome until a deadline: a child that sends nothing in
// time makes every read fail from then on.
class PipeReader {
public:
    PipeReader(int fd, Clock::time_point deadline) : fd_(fd), deadline_(deadline) {}
    bool raw(void* data, std::size_t size) {
        ok_ = ok_ && transferAll([this](char* at, std::size_t n) { return readInTime(at, n); },
                                 static_cast<char*>(data), size);
        return ok_;
    }
    std::uint64_t u64() {
        std::uint64_t v = 0;
        raw(&v, sizeof v);
        return v;
    }
    // Sizes come from our own child; the cap only guards against a mangled stream.
    bool text(std::string& s) {
        const std::uint64_t n = u64();
        if (!ok_ || n > (1ull << 32)) return ok_ = false;
        s.resize(n);
        return raw(s.data(), n);
    }
    template <typename T>
    bool array(std::vector<T>& v) {
        const std::uint64_t n = u64();
        if (!ok_ || n > (1ull << 36) / sizeof(T)) return ok_ = false;
        v.resize(n);
        return raw(v.data(), n * sizeof(T));
    }
    bool ok() const { return ok_; }
    bool timedOut() const { return timedOut_; }
    // Reads what is left so that the child never blocks on a full pipe.
    void drain() {
        char sink[4096];
        while (readInTime(sink, sizeof sink) > 0) {
        }
    }

private:
    // One read, once the pipe has something or is closed; -1 with EINTR lets
    // transferAll try again, -1 otherwise (the deadline passed) ends it.
    ssize_t readInTime(char* at, std::size_t n) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now()).count();
        pollfd wait{fd_, POLLIN, 0};
        const int ready = left > 0 ? ::poll(&wait, 1, static_cast<int>(std::min<long long>(left, 1 << 30))) : 0;
        if (ready < 0) return -1;  // errno tells: EINTR tries again
        if (ready == 0) {
            timedOut_ = true;
            errno = ETIMEDOUT;
            return -1;
        }
        return ::read(fd_, at, n);
    }

    int fd_;
    Clock::time_point deadline_;
    bool ok_ = true;
    bool timedOut_ = false;
};

// Every field of a layer that a read fills, in the order they travel:
// `stream` is a PipeWriter (const layer) or a PipeReader.
template <typename Stream, typename LayerRef>
void transferLayer(Stream& stream, LayerRef& layer) {
    stream.text(layer.name);
    stream.array(layer.positions);
    stream.array(layer.texCoords);
    stream.array(layer.normals);
    stream.array(layer.triangles);
    stream.array(layer.lineVertices);
    stream.array(layer.lineSegments);
    stream.text(layer.texturePath);
    stream.raw(layer.diffuse, sizeof layer.diffuse);
}

void sendOutcome(PipeWriter& out, const ReadOutcome& outcome) {
    out.u64(kOutcomeMagic);
    out.u64(outcome.ok ? 1 : 0);
    out.u64(outcome.log.size());
    for (const std::string& line : outcome.log) out.text(line);
    out.u64(outcome.layers.size());
    for (const Layer& layer : outcome.layers) transferLayer(out, layer);
    out.u64(kOutcomeMagic);
}

bool receiveOutcome(PipeReader& in, ReadOutcome& outcome) {
    if (in.u64() != kOutcomeMagic || !in.ok()) return false;
    outcome.ok = in.u64() == 1;
    const std::uint64_t lines = in.u64();
    for (std::uint64_t i = 0; in.ok() && i < lines && i < 100000; ++i) {
        std::string line;
        if (in.text(line)) outcome.log.push_back(std::move(line));
    }
    const std::uint64_t count = in.u64();
    for (std::uint64_t i = 0; in.ok() && i < count && i < 10'000'000; ++i) {
        Layer layer;
        transferLayer(in, layer);
        outcome.layers.push_back(std::move(layer));
    }
    return in.ok() && outcome.layers.size() == count && in.u64() == kOutcomeMagic && in.ok();
}

bool readInChild(const std::string& path, ReadOutcome& outcome) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return false;
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return false;
    }
    if (pid == 0) {
        ::close(fds[0]);
        if (assimpReadHooks().inChild) assimpReadHooks().inChild();
        ReadOutcome result;
        readModelInProcess(path, result);
        PipeWriter out(fds[1]);
        sendOutcome(out, result);
        const bool sent = out.flush();
        ::_exit(sent ? 0 : 3);  // no atexit handlers, no static destructors
    }
    ::close(fds[1]);
    const double limit = readTimeLimitSeconds(path);
    PipeReader in(fds[0], Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(limit)));
    ReadOutcome received;
    const bool complete = receiveOutcome(in, received);
    if (!in.timedOut()) in.drain();
    ::close(fds[0]);
    if (in.timedOut()) ::kill(pid, SIGKILL);
    int status = 0;
    pid_t waited;
    do {
        waited = ::waitpid(pid, &status, 0);
    } while (waited < 0 && errno == EINTR);

    if (complete) {
        outcome = std::move(received);
    } else {
        outcome = ReadOutcome{};
        if (in.timedOut())
            outcome.note("cannot read %s: Assimp did not finish it within %g s and was stopped; the file is damaged "
                         "or not supported",
                         path.c_str(), limit);
        else if (waited == pid && WIFSIGNALED(status))
            outcome.note("cannot read %s: Assimp crashed on it (signal %d); the file is damaged or not supported",
                         path.c_str(), WTERMSIG(status));
        else
            outcome.note("cannot read %s: the reader stopped before finishing", path.c_str());
    }
    return true;
}

}  // namespace

AssimpReadHooks& assimpReadHooks() {
    static AssimpReadHooks hooks;
    return hooks;
}

bool ReadModelWithAssimp(const std::string& path, std::vector<Layer>& layers) {
    return runOrLog("read", path, [&] {
        ReadOutcome outcome;
        if (!readInChild(path, outcome)) readModelInProcess(path, outcome);  // no process to spare: read here
        for (const std::string& line : outcome.log) engineLog("%s", line.c_str());
        if (!outcome.ok) return false;
        layers.reserve(layers.size() + outcome.layers.size());
        for (Layer& layer : outcome.layers) layers.push_back(std::move(layer));
        return true;
    });
}

}  // namespace engine
