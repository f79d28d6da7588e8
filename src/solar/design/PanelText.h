// The PANEL record keeps its texts in fixed 8-bit arrays; these move them
// to and from QString, cutting to the array and never leaving one unterminated.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstring>

template <std::size_t N>
QString PanelText(const char (&field)[N]) {
    const void* end = std::memchr(field, 0, N);
    const std::size_t length = end ? static_cast<const char*>(end) - field : N;
    return QString::fromUtf8(field, static_cast<qsizetype>(length));
}

// Keeps at most N-1 bytes, backing off so no UTF-8 sequence is cut in two.
template <std::size_t N>
void SetPanelText(char (&field)[N], const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::size_t length = static_cast<std::size_t>(bytes.size());
    if (length > N - 1) {
        length = N - 1;
        while (length > 0 && (static_cast<unsigned char>(bytes[static_cast<qsizetype>(length)]) & 0xC0) == 0x80)
            --length;
    }
    std::memset(field, 0, N);
    std::memcpy(field, bytes.constData(), length);
}
