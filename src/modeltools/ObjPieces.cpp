#include "ObjPieces.h"

#include <charconv>
#include <cctype>
#include <climits>
#include <cstring>

namespace {

constexpr std::size_t BUFFER_SIZE = 1 << 20;

const char* skipBlanks(const char* p, const char* end) {
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    return p;
}

// A decimal integer that fits an int; false when none stands at p. `plain` turns
// false when the digits are not as appendInt writes them (a sign, a leading zero).
bool readInt(const char*& p, const char* end, int& value, bool& plain) {
    const char* digits = p;
    const bool negative = p < end && *p == '-';
    if (negative) ++digits;
    const char* q = digits;
    long long magnitude = 0;
    // Eleven digits are already out of range: stop there.
    while (q < end && static_cast<unsigned>(*q - '0') < 10 && q - digits < 11) magnitude = magnitude * 10 + (*q++ - '0');
    if (q == digits) return false;
    if (q < end && static_cast<unsigned>(*q - '0') < 10) return false;
    const long long signedValue = negative ? -magnitude : magnitude;
    if (signedValue > INT_MAX || signedValue < INT_MIN) return false;
    value = static_cast<int>(signedValue);
    if (negative || (*digits == '0' && q - digits > 1)) plain = false;
    p = q;
    return true;
}

// The common spelling of a coordinate, "-123.456": its digits as a whole number
// divided by a power of ten. Both are exact in a double while the digits number
// at most 15, so the one rounding of the division gives the correctly rounded
// value, as from_chars would. False (p unmoved) for any other spelling.
bool readPlainDecimal(const char*& p, const char* end, double& value) {
    static constexpr double POWERS[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8,
                                        1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* q = p;
    const bool negative = q < end && *q == '-';
    if (negative) ++q;
    long long digits = 0;
    int count = 0, decimals = 0;
    const char* start = q;
    while (q < end && static_cast<unsigned>(*q - '0') < 10) digits = digits * 10 + (*q++ - '0'), ++count;
    if (q == start || count > 15) return false;
    if (q < end && *q == '.') {
        const char* fraction = ++q;
        while (q < end && static_cast<unsigned>(*q - '0') < 10 && count < 16) digits = digits * 10 + (*q++ - '0'), ++count;
        decimals = static_cast<int>(q - fraction);
        if (count > 15) return false;
    }
    // An exponent, a long fraction or a glued word: leave it to the full parser.
    if (q < end && (static_cast<unsigned>(*q - '0') < 10 || *q == 'e' || *q == 'E' || *q == '.' ||
                    std::isalpha(static_cast<unsigned char>(*q))))
        return false;
    const double magnitude = static_cast<double>(digits) / POWERS[decimals];
    value = negative ? -magnitude : magnitude;
    p = q;
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
    // Written as AppendObjFace would write it: one blank between corners, no
    // normals, texture on every corner or on none, a bare line feed at the end.
    bool plain = true;
    bool firstTextured = false;
    for (int corner = 0; corner < 3; ++corner) {
        const char* blank = p;
        p = skipBlanks(p, end);
        if (p - blank != (corner == 0 ? 0 : 1) || (corner > 0 && *blank != ' ')) plain = false;
        if (!readInt(p, end, face.v[corner], plain)) return false;
        bool textured = false;
        if (p < end && *p == '/') {
            ++p;
            if (p < end && *p != '/') {
                if (!readInt(p, end, face.t[corner], plain)) return false;
                face.hasTexture = textured = true;
            }
            if (p < end && *p == '/') {
                ++p;
                int normal = 0;
                if (!readInt(p, end, normal, plain)) return false;
                plain = false;
            }
        }
        if (corner == 0)
            firstTextured = textured;
        else if (textured != firstTextured)
            plain = false;
        if (p < end && *p != ' ' && *p != '\t' && *p != '\r' && *p != '\n') return false;
    }
    if (!(p + 1 == end && *p == '\n')) plain = false;
    p = skipBlanks(p, end);
    // A fourth corner: polygons are not supported.
    if (p != end && *p != '\r' && *p != '\n') return false;
    face.plain = plain;
    return true;
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
        if (readPlainDecimal(p, end, *value)) continue;
        const auto [next, error] = std::from_chars(p, end, *value);
        if (error != std::errc() || next == p) return false;
        p = next;
    }
    return true;
}

void WriteObjFace(std::string& out, std::string_view piece, const ObjFace& face) {
    if (face.plain)
        out.append(piece);
    else
        AppendObjFace(out, face);
}
