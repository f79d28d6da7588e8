// The customer's HTML report of a run, made from the master CSV alone.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdio>
#include <string>

#include "ReportSite.h"

// The CSV's path with ".html"; "" and "Failed to create HTML" when the CSV
// cannot be read. Writes and links the technical documentation.
std::string CreateQuickHTML(const std::string& csvFilePath, const ReportSite& site);

// The CSV's path with ".jpg", base64; "" when missing, over 5000000 bytes or unreadable.
std::string ConvertImageToBase64(const std::string& imagePath);
// Standard alphabet, "=" padding, no line breaks.
std::string Base64Encode(const unsigned char* data, int length);
// "?", the degree sign and "¿" become "&deg;", quotes become references,
// dashes "-", the ellipsis "...": for coordinate texts.
QString CleanHTMLText(const QString& text);
