// The engineers' page beside the customer's report: how the figures come
// about, with the project's few figures filled in.
#pragma once

#include <string>

#include "ReportSite.h"

// The CSV's path with "_TechnicalDocumentation.html"; asks for a CSV when
// the given one does not exist; "" on cancel or failure.
std::string CreateTechnicalDocumentation(const std::string& csvFilePath, const ReportSite& site);
