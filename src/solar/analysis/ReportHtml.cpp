#include "ReportHtml.h"

std::string CreateQuickHTML(const std::string&, const ReportSite&) { return {}; }
std::string ConvertImageToBase64(const std::string&) { return {}; }
std::string Base64Encode(const unsigned char*, int) { return {}; }
QString CleanHTMLText(const QString& text) { return text; }
