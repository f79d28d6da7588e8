// The sections of the engineers' page, in the order of its table of contents.
#pragma once

#include <QString>
#include <cstdio>
#include <string>

void WriteDocumentationHeader(std::FILE* file, const QString& projectName, const QString& locationAddress,
                              const QString& safeLAT, const QString& safeLON);
void WriteTableOfContents(std::FILE* file);
void WriteSystemOverview(std::FILE* file, double totalPower, int panelCount, double totalAnnual);
void WriteMethodologySection(std::FILE* file);
void WritePVGISSection(std::FILE* file);
// Sections 4 and 5: the panel and the sun's geometry, fixed sentences.
void WritePanelAndGeometrySections(std::FILE* file);
void WriteShadingSection(std::FILE* file);
// Sections 7 to 10; the performance section holds the project's yield.
void WriteClosingSections(std::FILE* file, double totalPower, double totalAnnual);
// The link back to the customer's report, when it is there.
void WriteFooter(std::FILE* file, const std::string& csvFilePath);
