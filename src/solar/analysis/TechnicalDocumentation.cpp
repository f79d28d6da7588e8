#include "TechnicalDocumentation.h"

std::string CreateTechnicalDocumentation(const std::string&, const ReportSite&) { return {}; }
