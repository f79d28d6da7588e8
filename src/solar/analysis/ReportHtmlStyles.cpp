#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"

namespace {

// A soft blue page with white cards; it prints and mails as well as it shows.
const char* const STYLE_SHEET = R"CSS(<style>
body { margin: 0; padding: 24px; font-family: 'Segoe UI', Arial, sans-serif; color: #1f2937;
  background: linear-gradient(135deg, #e0ecff 0%, #f5f9ff 50%, #dbeafe 100%); }
.container { max-width: 1200px; margin: 0 auto; background: #ffffff; border-radius: 16px;
  box-shadow: 0 10px 30px rgba(30, 64, 175, 0.12); padding: 32px 40px; }
h1 { color: #1e3a8a; text-align: center; margin: 0 0 4px 0; font-size: 2.1em; }
h2 { color: #1e40af; border-bottom: 2px solid #dbeafe; padding-bottom: 6px; }
h3 { color: #1e40af; }
.created-by { text-align: center; color: #64748b; font-style: italic; margin-bottom: 24px; }
.summary { background: #f8fbff; border: 1px solid #dbeafe; border-radius: 12px; padding: 16px 24px; margin: 20px 0; }
.summary p { margin: 6px 0; }
.location-info a { color: #2563eb; text-decoration: none; border-bottom: 1px dotted #2563eb; }
.location-info a:hover { color: #1e3a8a; }
.project-image { margin: 24px 0; text-align: center; border-radius: 12px; }
.energy-indicator { display: inline-block; width: 14px; height: 14px; border-radius: 3px;
  margin-right: 8px; vertical-align: middle; }
.energy-indicator.energy-high { background: #22c55e; }
.energy-indicator.energy-medium { background: #facc15; }
.energy-indicator.energy-low { background: #ef4444; }
tr.energy-high { background: #ecfdf5; }
tr.energy-medium { background: #fefce8; }
tr.energy-low { background: #fef2f2; }
table { border-collapse: collapse; width: 100%; font-size: 0.78em; }
th, td { border: 1px solid #e2e8f0; padding: 4px 3px; text-align: center; }
th { background: #1e3a8a; color: #ffffff; position: sticky; top: 0; }
.number { text-align: right; font-variant-numeric: tabular-nums; }
.sortable { cursor: pointer; }
.sortable.asc, .sortable.desc { background: #2563eb; }
.explanation-page { background: linear-gradient(160deg, #ffffff 0%, #eef5ff 100%); border: 1px solid #dbeafe;
  border-radius: 16px; padding: 28px 32px; margin: 32px 0; page-break-before: always; }
.explanation-content { margin-top: 12px; }
.explanation-title { font-size: 1.7em; font-weight: bold; color: #1e3a8a; text-align: center; margin-bottom: 6px; }
.explanation-subtitle { font-size: 1.1em; color: #475569; text-align: center; font-style: italic; margin-bottom: 16px; }
.feature-block { background: #ffffff; border-left: 5px solid #3b82f6; border-radius: 10px;
  box-shadow: 0 2px 8px rgba(30, 64, 175, 0.08); padding: 14px 18px; margin: 14px 0; }
.feature-title { font-weight: bold; color: #1e40af; font-size: 1.1em; margin-bottom: 4px; }
.feature-text { color: #334155; line-height: 1.5; }
.math-precision { text-align: center; font-weight: bold; color: #1e3a8a; font-size: 1.15em; margin-top: 20px; }
.floating-particles { position: absolute; top: 0; left: 0; width: 100%; height: 100%; pointer-events: none; }
.particle { position: absolute; bottom: -20px; width: 10px; height: 10px; border-radius: 50%;
  background: rgba(250, 204, 21, 0.6); animation: rise 12s linear infinite; }
@keyframes rise { from { transform: translateY(0); opacity: 0.8; } to { transform: translateY(-900px); opacity: 0; } }
.footer-text { color: #64748b; font-size: 0.9em; }
canvas { max-width: 100%; }
</style>
)CSS";

}  // namespace

void WriteHTMLStyles(std::FILE* file) { PutText(file, STYLE_SHEET); }
