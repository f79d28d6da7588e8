#include "SolkManualPage.h"

namespace {

constexpr const char* TITLE = "SOLK Manual - Solar Panel Planner User Guide";
constexpr const char* MAKER = "Orvo Systems";
constexpr const char* TAG_LINE = "Precision Design, Faster Installations, Higher Returns for Panel Planners & Installers";

void WriteHtmlHeader(std::string& page, const char* title) {
    page += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"UTF-8\">\n";
    page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1.0\">\n<title>";
    page += title;
    page += "</title>\n";
}

void WriteHtmlStyles(std::string& page) {
    page += R"CSS(<style>
body { font-family: "Liberation Sans", Arial, sans-serif; margin: 0; background: #f4f7f9; color: #223; line-height: 1.55; }
.container { max-width: 1100px; margin: 0 auto; padding: 24px; }
h1 { color: #0b4f6c; margin-bottom: 4px; }
h2 { color: #0b4f6c; border-bottom: 2px solid #f5a623; padding-bottom: 4px; margin-top: 36px; }
h3 { color: #145c7a; }
.byline { font-style: italic; margin: 0; }
.tagline { color: #f57c00; font-weight: bold; }
.cards { display: grid; grid-template-columns: repeat(auto-fill, minmax(300px, 1fr)); gap: 16px; }
.card { background: #fff; border-radius: 8px; padding: 16px; box-shadow: 0 1px 4px rgba(0,0,0,0.12); }
.benefit { display: inline-block; background: #e8f4ea; color: #22683a; border-radius: 10px; padding: 2px 10px; font-size: 0.85em; }
table { border-collapse: collapse; width: 100%; background: #fff; }
th, td { border: 1px solid #ccd; padding: 8px 10px; text-align: left; vertical-align: top; }
th { background: #0b4f6c; color: #fff; }
img { max-width: 100%; border: 1px solid #ccd; border-radius: 6px; }
.placeholder { border: 2px dashed #99a; padding: 24px; text-align: center; color: #667; background: #fff; border-radius: 6px; }
.tabs { display: flex; flex-wrap: wrap; gap: 4px; margin-top: 12px; }
.tab-button { border: 1px solid #0b4f6c; background: #fff; color: #0b4f6c; padding: 8px 14px; cursor: pointer; border-radius: 6px 6px 0 0; }
.tab-button.active { background: #0b4f6c; color: #fff; }
.tab-content { display: none; background: #fff; padding: 16px 20px; border: 1px solid #0b4f6c; }
.tab-content.active { display: block; }
.key { font-family: monospace; background: #eef; border: 1px solid #99a; border-radius: 3px; padding: 0 4px; }
.cta { background: #0b4f6c; color: #fff; padding: 20px; border-radius: 8px; margin-top: 36px; }
footer { margin-top: 24px; color: #667; font-size: 0.85em; text-align: center; }
</style>
)CSS";
}

void WriteManualBodyStart(std::string& page, const char* maker, const char* tagLine) {
    page += "<div class=\"container\">\n";
    page += "<h1>SOLK User Manual: Master Your Solar Panel Planning</h1>\n";
    page += "<p class=\"byline\">by ";
    page += maker;
    page += "</p>\n<p class=\"tagline\">";
    page += tagLine;
    page += "</p>\n";
}

void WriteIntroSection(std::string& page) {
    page += R"HTML(<h2>Introduction</h2>
<p>SOLK plans solar panels on the real roofs of a site. It works on the textured 3D model made from the drone's
photographs: every panel is placed on the measured roof surface, and its shading is found by casting rays from the
panel towards the sun, hour by hour over a whole year, against the model itself. Trees, chimneys, neighbouring
buildings and the parapet of the roof cast the shadows they really cast.</p>
<p>The result is a report per panel and for the whole system: the yearly and monthly energy, the losses to shading,
tables for the installer and drawings of the construction.</p>
)HTML";
}

void WriteFeatureCard(std::string& page, const char* title, const char* benefit, const char* text) {
    page += "<div class=\"card\"><h3>";
    page += title;
    page += "</h3><span class=\"benefit\">";
    page += benefit;
    page += "</span><p>";
    page += text;
    page += "</p></div>\n";
}

void WriteFeaturesSection(std::string& page) {
    page += "<h2>Key Features Overview</h2>\n<div class=\"cards\">\n";
    WriteFeatureCard(page, "100% Autonomous Drone Flight", "No climbing on roofs",
                     "The site is photographed by a drone flying a planned route: nobody has to go up on the roof to "
                     "measure it, and the whole surroundings are captured in the same flight.");
    WriteFeatureCard(page, "One-Button 3D Model Creation", "A model in hours, not days",
                     "The photographs become a geo-referenced textured mesh that opens here with File &gt; Open. "
                     "Distances, heights and slopes are measured on it to the centimetre.");
    WriteFeatureCard(page, "Comprehensive Energy Calculation Methodology", "Shading from the real site",
                     "Each panel's test points cast a ray towards the sun for every daylight hour of the year. The "
                     "hourly climate year of the site, the angle of incidence, the temperature of the module and the "
                     "inverter type all enter the energy of each hour.");
    WriteFeatureCard(page, "Monthly Energy Production Analysis", "Know every month",
                     "The report shows the production of every month beside the losses to shading, so the customer "
                     "sees what winter and summer bring.");
    WriteFeatureCard(page, "User-Friendly Interface", "Plan by clicking on the roof",
                     "Roof planes are digitised with a few clicks on the model; panels fill them in rows, in portrait "
                     "or landscape, and can be moved or deleted one by one.");
    WriteFeatureCard(page, "Integration Capabilities", "Files for every next step",
                     "Panels are kept as COLLADA files beside the model; the report writes HTML pages, CSV tables and "
                     "SVG construction drawings that open in any browser, spreadsheet or drawing program.");
    page += "</div>\n";
}

void WriteImage(std::string& page, const std::string& base64, const char* alt) {
    page += "<img src=\"data:image/jpeg;base64,";
    page += base64;
    page += "\" alt=\"";
    page += alt;
    page += "\">\n";
}

// A tab's picture, or the box that says which picture it waits for.
void WriteTabImage(std::string& page, const ManualImages& images, int picture) {
    const std::string& base64 = images[static_cast<std::size_t>(picture)];
    if (!base64.empty()) {
        WriteImage(page, base64, ManualPictureName(picture));
        return;
    }
    page += "<div class=\"placeholder\">(Image will be embedded when ";
    page += ManualPictureName(picture);
    page += " JPG is available)</div>\n";
}

void WriteImageSection(std::string& page, const ManualImages& images) {
    page += "<h2>SOLK Visualizations: Design &amp; Performance Insights</h2>\n";
    if (!images[MANUAL_MODEL].empty()) {
        WriteImage(page, images[MANUAL_MODEL], "3D Model");
        return;
    }
    page += "<div class=\"placeholder\">[3D Model Image Placeholder]<br>A view of the site's 3D model with its panels "
            "placed will be shown here.</div>\n";
}

void WriteBenefitsTable(std::string& page) {
    page += R"HTML(<h2>Core Benefits of SOLK</h2>
<table>
<tr><th>Benefit</th><th>What it means for you</th></tr>
<tr><td>Cost Savings</td><td>No second site visit and no scaffolding for measuring; offers are priced on measured roofs.</td></tr>
<tr><td>Efficiency Boost</td><td>Panels are placed where the sun really reaches them, so fewer panels make the same energy.</td></tr>
<tr><td>Sustainability</td><td>Every panel placed in the sun replaces energy from the grid for its whole life.</td></tr>
<tr><td>Time Efficiency</td><td>A whole roof is planned and reported in one sitting, from the same model.</td></tr>
<tr><td>Scalability</td><td>The same steps serve a family house and a block of hundreds of panels.</td></tr>
</table>
)HTML";
}

void WriteTabButtons(std::string& page) {
    static const char* const tabs[][2] = {{"overview", "Overview"},
                                          {"toolbar", "Toolbar Icons"},
                                          {"menu", "Main Menu"},
                                          {"getting-started", "Getting Started"},
                                          {"panel-placement", "Panel Placement"},
                                          {"analysis", "Analysis &amp; Reports"}};
    page += "<div class=\"tabs\">\n";
    for (const auto& tab : tabs) {
        page += "<button class=\"tab-button";
        page += tab[0] == std::string("overview") ? " active" : "";
        page += "\" onclick=\"showTab(event, '";
        page += tab[0];
        page += "')\">";
        page += tab[1];
        page += "</button>\n";
    }
    page += "</div>\n";
}

void WriteUserGuideContent(std::string& page, const ManualImages& images) {
    page += "<h2>User Manual</h2>\n";
    WriteTabButtons(page);

    page += R"HTML(<div id="overview" class="tab-content active">
<h3>Overview</h3>
<p>A plan goes through four steps, each with its tab in this manual: open the site's 3D model, mark the roof planes,
place the panels, and run the report. Everything you make is kept in files beside the model, so a plan can be closed
and opened again later, on this computer or another.</p>
<p>The view is moved with the mouse and the keyboard: drag with the left button to turn the view, with the right
button to move it, and turn the wheel to zoom. <span class="key">Left</span> and <span class="key">Right</span> turn,
<span class="key">Up</span> and <span class="key">Down</span> tilt, and <span class="key">PgUp</span>,
<span class="key">PgDn</span>, <span class="key">Home</span> and <span class="key">End</span> move the view.
View &gt; Full view brings the whole model back.</p>
</div>
<div id="toolbar" class="tab-content">
<h3>Toolbar Icons</h3>
<p>The tool bar above the view holds the tools used all the time:</p>
<ul>
<li><b>Zoom in</b> and <b>Zoom out</b> move the camera towards the model or away from it.</li>
<li><b>Invert</b> swaps the observer and the target of a sight line.</li>
<li><b>Observer +</b> and <b>Observer -</b> raise and lower the observer's eye above the clicked point.</li>
<li><b>Select</b> picks a measurement or a panel in the view for the commands that act on it.</li>
<li><b>Digitize</b> starts digitising on the model, as the Digitize menu does.</li>
<li><b>Depth</b> and <b>Backface culling</b> change how lines and the back of the mesh are drawn.</li>
</ul>
)HTML";
    WriteTabImage(page, images, MANUAL_ICONS);
    page += R"HTML(</div>
<div id="menu" class="tab-content">
<h3>Main Menu</h3>
<ul>
<li><b>File</b>: Open a model, Add model(s) beside it, Add PRJ to give it a coordinate system, Exit.</li>
<li><b>View</b>: Full view, the render mode, Save viewport and Restore viewport, View from the top.</li>
<li><b>Digitize</b>: Roofs, Line, Polygon and the other shapes drawn by clicking on the model; Abort ends one.</li>
<li><b>Measurements</b>: Display measurings, Save measurements, Import measurements and the billboards.</li>
<li><b>Model</b>: crop, clean, geocode, export, shift and zip the model.</li>
<li><b>Solar panels</b>: Detailed  report, Define Customer, Download PVGIST csv, Show panels names,
Show roof planes, Sort panels, List panels, Create construction, Create plane, Save panels, Restore panels,
Delete all panels, and Create SOLK manual, which wrote this page.</li>
</ul>
)HTML";
    WriteTabImage(page, images, MANUAL_MENU);
    page += R"HTML(</div>
<div id="getting-started" class="tab-content">
<h3>Chapter 1: Getting Started</h3>
<h4>1.1 Loading a 3D Model</h4>
<p>Choose File &gt; Open and pick the model's OBJ file. The model is read with its textures and its coordinate
system (the ".prj" file beside it); the status line shows the file and its size. A model without a coordinate system
can still be viewed, but the sun's position needs one: use File &gt; Add PRJ to give it one. Before the first report,
Solar panels &gt; Define Customer records the customer's name and Solar panels &gt; Download PVGIST csv fetches the
site's hourly climate year.</p>
<h4>1.2 Defining Reference Planes</h4>
<p>Choose Digitize &gt; Roofs. Click three points on a sloped roof, in the order of the row you want, or four and more
points around a flat roof, and finish with a right click. The plane through the clicked points is the reference the
panels are laid on; Solar panels &gt; Show roof planes shows or hides the planes made so far, and Create plane makes
one from the last outline.</p>
)HTML";
    WriteTabImage(page, images, MANUAL_REFERENCE_PLANE);
    page += R"HTML(</div>
<div id="panel-placement" class="tab-content">
<h3>Panel Placement</h3>
<h4>Basic Panel Placement</h4>
<p>When a roof outline is finished the Solar Panels form opens. Choose the module from the catalogue, the gaps between
panels and rows (Help explains them), and Landscape for panels lying on their long side. OK places the panels on the
plane; Cancel places none.</p>
)HTML";
    WriteTabImage(page, images, MANUAL_PANELS);
    page += R"HTML(<h4>Automatic Alignment for Tiled Roofs</h4>
<p>On a tiled roof choose its Roof type in the form: the panels then lie along the slope of the plane clicked on
the roof, instead of standing in tilted rows as on a flat roof.</p>
<h4>Row Placement and Filling</h4>
<p>On a flat roof the panels stand in rows tilted towards the sun, and the rows fill the outline clicked. Rows pairing
sets how the rows are paired, and the gaps of the form set the distance between panels and between rows.</p>
<h4>Post-Placement Modification</h4>
<p>Measure a line from a panel to open its dialog: Move panel, Lift panel, Delete panel and Duplicate panel act on
that panel, and the "group" buttons on its whole construction group; Show info and Show shading tell what the report
found for it. Solar panels &gt; Show panels names writes each panel's name on it, Sort panels numbers them, and List
panels shows their table. Delete all panels starts again.</p>
)HTML";
    WriteTabImage(page, images, MANUAL_PANELS_TOOLS);
    page += R"HTML(<h4>Automatic System Features</h4>
<p>Each panel is kept as a file in the panel folder beside the model, named with its number and its group; Save
panels and Restore panels keep and bring back a copy of a whole layout. A plan holds at most 500 panels.</p>
</div>
<div id="analysis" class="tab-content">
<h3>Chapter 3: Analysis and Reporting</h3>
<p>Solar panels &gt; Detailed  report runs the analysis in one of four ways: 5 points or the Center of each panel, with
an Optimizer per panel or a String Inverter. Five points find partial shade that the centre alone misses; a string
inverter loses more to a shaded panel than optimizers do. A progress window shows the panel in work and can stop the
run.</p>
<p>The report opens in the browser: the system's yearly energy, the loss to shading, the months, and a page per panel
with its hours of shade. The same figures are written as CSV tables for a spreadsheet. Solar panels &gt; Create
construction draws the rows and their supports as SVG drawings for the installer.</p>
)HTML";
    WriteTabImage(page, images, MANUAL_GRAPH);
    page += "</div>\n";
}

void WriteCallToActionSection(std::string& page) {
    page += R"HTML(<div class="cta">
<h2>Need Further Assistance or a Demo?</h2>
<p>Our team will gladly walk you through a plan of your own site, from the drone flight to the report.</p>
</div>
)HTML";
}

void WriteHtmlFooter(std::string& page) {
    page += R"HTML(<footer>SOLK Solar Panel Planner</footer>
</div>
<script>
function showTab(event, id) {
  document.querySelectorAll('.tab-content').forEach(function (tab) { tab.classList.remove('active'); });
  document.querySelectorAll('.tab-button').forEach(function (button) { button.classList.remove('active'); });
  document.getElementById(id).classList.add('active');
  event.currentTarget.classList.add('active');
}
</script>
</body>
</html>
)HTML";
}

}  // namespace

std::string SolkManualPage(const ManualImages& images) {
    std::string page;
    WriteHtmlHeader(page, TITLE);
    WriteHtmlStyles(page);
    page += "</head>\n<body>\n";
    WriteManualBodyStart(page, MAKER, TAG_LINE);
    WriteIntroSection(page);
    WriteFeaturesSection(page);
    WriteImageSection(page, images);
    WriteBenefitsTable(page);
    WriteUserGuideContent(page, images);
    WriteCallToActionSection(page);
    WriteHtmlFooter(page);
    return page;
}
