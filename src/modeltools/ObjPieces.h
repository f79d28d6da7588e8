// Reading OBJ text the way the model tools always have: a line at a time
// through a fixed buffer, so a line longer than the buffer comes in pieces
// and each piece is treated as a line of its own. Models of the expected
// kind (triangles, short lines) never meet the limit.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// Buffer size of the crop, clean and shift passes: pieces of up to 99 characters.
constexpr int OBJ_LINE_LIMIT = 100;

class ObjPieceReader {
public:
    // limit counts the terminator, as a C line buffer does: pieces hold at most limit - 1 characters.
    ObjPieceReader(std::FILE* file, int limit);
    // The next piece, with its line feed when the line ends in it; false at the end of the file.
    bool next(std::string_view& piece);
    // Back to the start of the file.
    void rewind();
    // Bytes handed out so far.
    long long consumed() const { return consumed_; }

private:
    bool refill();

    std::FILE* file_;
    std::size_t limit_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool eof_ = false;
    long long consumed_ = 0;
};

// Lines (pieces) of the file and how many of them are "v " and "f " lines; false when it can't be read.
bool CountObjPieces(const std::string& path, int limit, long long& pieces, long long& vertices, long long& faces);

// One triangle of an "f" line: 1-based vertex and texture indices (texture 0 when none).
struct ObjFace {
    int v[3] = {0, 0, 0};
    int t[3] = {0, 0, 0};
    bool hasTexture = false;
    // The piece reads exactly as AppendObjFace writes the face, so it can be copied as it stands.
    bool plain = false;
};

// Reads a face piece ("f ..."): "v/t", "v/t/n", "v//n" or "v" corners, three of them.
// False for anything else (a polygon of more corners, a broken line).
bool ReadObjFace(std::string_view piece, ObjFace& face);

// The face as the tools write it: "f v/t v/t v/t\n", normal references
// dropped; "f v v v\n" for a face without texture coordinates.
void AppendObjFace(std::string& out, const ObjFace& face);

// The face of `piece` as the tools write it: the piece itself when it is plain.
void WriteObjFace(std::string& out, std::string_view piece, const ObjFace& face);

// Parses "v X Y Z" (the piece starts with "v "); false when it has fewer than three numbers.
bool ReadObjVertex(std::string_view piece, double& x, double& y, double& z);
