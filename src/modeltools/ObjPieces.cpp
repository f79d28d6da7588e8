#include "ObjPieces.h"

#include <charconv>
#include <cstring>

namespace {

constexpr std::size_t BUFFER_SIZE = 1 << 20;

const char* skipBlanks(const char* p, const char* end) {
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    return p;
}

// A decimal integer; false when none stands at p.
bool readInt(const char*& p, const char* end, int& value) {
    const auto [next, error] = std::from_chars(p, end, value);
    if (error != std::errc() || next == p) return false;
    p = next;
    return true;
}

void appendInt(std::string& out, int value) {
    char text[16];
    const auto [next, error] = std::to_chars(text, text + sizeof text, value);
    out.append(text, next);
}

}  // namespace

ObjPieceReader::ObjPieceReader(std::FILE* file, int limit)
    : file_(file), limit_(static_cast<std::size_t>(limit)), buffer_(BUFFER_SIZE) {}

bool ObjPieceReader::refill() {
    if (eof_) return false;
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    const std::size_t got = std::fread(buffer_.data() + end_, 1, buffer_.size() - end_, file_);
    if (got == 0) eof_ = true;
    end_ += got;
    return got > 0;
}

bool ObjPieceReader::next(std::string_view& piece) {
    const std::size_t most = limit_ - 1;
    for (;;) {
        const std::size_t available = end_ - begin_;
        const std::size_t window = available < most ? available : most;
        const char* start = buffer_.data() + begin_;
        const void* feed = std::memchr(start, '\n', window);
        std::size_t length = 0;
        if (feed)
            length = static_cast<const char*>(feed) - start + 1;
        else if (available >= most)
            length = most;
        else if (!refill()) {
            if (available == 0) return false;
            length = available;
        } else
            continue;
        piece = std::string_view(buffer_.data() + begin_, length);
        begin_ += length;
        consumed_ += static_cast<long long>(length);
        return true;
    }
}

void ObjPieceReader::rewind() {
    std::rewind(file_);
    begin_ = end_ = 0;
    eof_ = false;
    consumed_ = 0;
}

bool CountObjPieces(const std::string& path, int limit, long long& pieces, long long& vertices, long long& faces) {
    pieces = vertices = faces = 0;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return false;
    ObjPieceReader reader(file, limit);
    std::string_view piece;
    while (reader.next(piece)) {
        ++pieces;
        if (piece.size() > 1 && piece[1] == ' ') {
            vertices += piece[0] == 'v';
            faces += piece[0] == 'f';
        }
    }
    std::fclose(file);
    return true;
}

bool ReadObjFace(std::string_view piece, ObjFace& face) {
    if (piece.size() < 2 || piece[0] != 'f' || piece[1] != ' ') return false;
    const char* p = piece.data() + 2;
    const char* end = piece.data() + piece.size();
    face = ObjFace{};
    for (int corner = 0; corner < 3; ++corner) {
        p = skipBlanks(p, end);
        if (!readInt(p, end, face.v[corner])) return false;
        if (p < end && *p == '/') {
            ++p;
            if (p < end && *p != '/') {
                if (!readInt(p, end, face.t[corner])) return false;
                face.hasTexture = true;
            }
            if (p < end && *p == '/') {
                ++p;
                int normal = 0;
                if (!readInt(p, end, normal)) return false;
            }
        }
        if (p < end && *p != ' ' && *p != '\t' && *p != '\r' && *p != '\n') return false;
    }
    p = skipBlanks(p, end);
    // A fourth corner: polygons are not supported.
    return p == end || *p == '\r' || *p == '\n';
}

void AppendObjFace(std::string& out, const ObjFace& face) {
    out += 'f';
    for (int corner = 0; corner < 3; ++corner) {
        out += ' ';
        appendInt(out, face.v[corner]);
        if (face.hasTexture) {
            out += '/';
            appendInt(out, face.t[corner]);
        }
    }
    out += '\n';
}

bool ReadObjVertex(std::string_view piece, double& x, double& y, double& z) {
    const char* p = piece.data() + 1;
    const char* end = piece.data() + piece.size();
    double* values[3] = {&x, &y, &z};
    for (double* value : values) {
        p = skipBlanks(p, end);
        if (p < end && *p == '+') ++p;
        const auto [next, error] = std::from_chars(p, end, *value);
        if (error != std::errc() || next == p) return false;
        p = next;
    }
    return true;
}
