#include "ShadowAnalysis.h"

std::string GetShadingCSV(const PANEL&) { return {}; }
std::string GetShadingDae(const PANEL&) { return {}; }
std::string AnalyzeShadowForPointEx(const PANEL&, CombinedPanelResults&, const std::string&, bool, int) { return {}; }
void ShowPanelShadingBtnClick(const QString&) {}
