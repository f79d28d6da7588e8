#include <QString>
#include <algorithm>
#include <cmath>

#include "EnergyModel.h"
#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"

namespace {

constexpr int ROW_FIELDS = 27;
constexpr int TILT = 4;
constexpr int AZIMUTH = 5;
constexpr int POWER = 6;
constexpr int MODULE = 7;
constexpr int FIRST_MONTH = 9;
constexpr int ANNUAL = 21;
constexpr int SHADING_PERCENT = 22;
constexpr int SHADED_HOURS = 24;
constexpr int DIRECT_SUN_HOURS = 25;
constexpr int ROOF = 26;
constexpr int MODULE_TEXT_LENGTH = 10;

struct HeaderCell {
    const char* label;
    const char* type;
};

constexpr HeaderCell HEADER[] = {
    {"Panel ID", "number"},  {"Power (Wp)", "number"}, {"Module Type", "text"}, {"Tilt/Azimuth", "text"},
    {"Annual (kWh)", "number"}, {"Jan", "number"},     {"Feb", "number"},       {"Mar", "number"},
    {"Apr", "number"},       {"May", "number"},        {"Jun", "number"},       {"Jul", "number"},
    {"Aug", "number"},       {"Sep", "number"},        {"Oct", "number"},       {"Nov", "number"},
    {"Dec", "number"},       {"Shading Loss (%)", "number"}, {"Shaded hours", "number"}, {"Sun hours", "number"},
    {"Performance", "text"}, {"Roof", "text"},          {"Bifacial Gain", "number"}, {"Bifacial Energy", "number"},
};

// The rows' colours by thirds of the range, unless all panels lie within 3 percent.
struct Bands {
    bool uniformAll = false;
    double lowCut = 0;
    double highCut = 0;
};

Bands RowBands(const std::vector<QStringList>& rows) {
    double minE = 1e300;
    double maxE = -1e300;
    double sum = 0;
    for (const QStringList& row : rows) {
        const double energy = ReportNumber(row, ANNUAL, 0);
        minE = std::min(minE, energy);
        maxE = std::max(maxE, energy);
        sum += energy;
    }
    const double average = rows.empty() ? 0 : sum / static_cast<double>(rows.size());
    const double energyRange = maxE > minE ? maxE - minE : 0;
    Bands bands;
    bands.uniformAll = energyRange <= 1e-9 + average * 0.03;
    bands.lowCut = minE + (maxE - minE) / 3;
    bands.highCut = minE + 2 * (maxE - minE) / 3;
    return bands;
}

// The leading digits of "12/417B": 12.
int LeadingNumber(const QString& id) {
    int number = 0;
    for (const QChar c : id) {
        if (!c.isDigit()) break;
        number = number * 10 + c.digitValue();
    }
    return number;
}

void WriteHeader(std::FILE* file) {
    PutText(file, "<thead>\n<tr>\n");
    int column = 0;
    for (const HeaderCell& cell : HEADER) {
        PutFormat(file, "<th class='sortable' data-column='%d' data-type='%s' data-label='%s'>%s</th>\n", column,
                  cell.type, QString(cell.label).toHtmlEscaped().toUtf8().constData(),
                  QString(cell.label).toHtmlEscaped().toUtf8().constData());
        ++column;
    }
    PutText(file, "</tr>\n</thead>\n<tbody>\n");
}

void WriteRow(std::FILE* file, const QStringList& row, const Bands& bands) {
    const double energy = ReportNumber(row, ANNUAL, 0);
    const char* rowClass = "energy-high";
    const char* word = "Excellent";
    if (!bands.uniformAll && energy < bands.lowCut) {
        rowClass = "energy-low";
        word = "Needs Attention";
    } else if (!bands.uniformAll && energy < bands.highCut) {
        rowClass = "energy-medium";
        word = "Good";
    }
    const QString id = row[0];
    const QString module = row[MODULE];
    const QString shortModule =
        module.size() > MODULE_TEXT_LENGTH ? module.left(MODULE_TEXT_LENGTH) + "..." : module;
    const int tilt = static_cast<int>(ReportNumber(row, TILT, 0) + 0.5);
    const int azimuth = static_cast<int>(ReportNumber(row, AZIMUTH, 0) + 0.5);

    PutFormat(file, "<tr class='%s'>\n", rowClass);
    PutFormat(file, "<td data-value='%d'>", LeadingNumber(id));
    PutText(file, id.toHtmlEscaped() + "</td>\n");
    PutText(file, "<td class='number'>" + row[POWER].toHtmlEscaped() + "</td>\n");
    PutText(file, "<td title=\"" + module.toHtmlEscaped() + "\">" + shortModule.toHtmlEscaped() + "</td>\n");
    PutFormat(file, "<td data-value='%d'>%d/%d</td>\n", tilt, tilt, azimuth);
    PutFormat(file, "<td class='number'><strong>%.1f</strong></td>\n", energy);
    for (int month = 0; month < 12; ++month)
        PutFormat(file, "<td class='number'>%.1f</td>\n", ReportNumber(row, FIRST_MONTH + month, 0));
    PutFormat(file, "<td class='number'>%.1f</td>\n", ReportNumber(row, SHADING_PERCENT, 0));
    PutFormat(file, "<td class='number'>%d</td>\n", ReportInteger(row, SHADED_HOURS, 0));
    PutFormat(file, "<td class='number'>%d</td>\n", ReportInteger(row, DIRECT_SUN_HOURS, 0));
    PutFormat(file, "<td><span class='energy-indicator %s'></span>%s</td>\n", rowClass, word);
    const bool flat = row[ROOF].contains("White");
    PutFormat(file, "<td>%s</td>\n", flat ? "Flat" : "Tiled");
    // The CSV's energy of a white roof holds the bifacial gain already; the
    // cell shows the gain applied once more to it.
    if (flat)
        PutFormat(file, "<td class='number'>+%.0f%%</td><td class='number'>%.1f</td>\n",
                  static_cast<double>(BIFACIALGAINPERCENT),
                  energy * (1 + BIFACIALGAINPERCENT / 100.0) - energy);
    else
        PutText(file, "<td>-</td><td>-</td>\n");
    PutText(file, "</tr>\n");
}

// Column 0 sorts by group letter, then by the number before "/"; others by
// data-value or text. Attached when the page is loaded, so that it runs after
// the plain sort and its order is the one that stays.
const char* const TABLE_SORT_SCRIPT = R"JS(<script>
document.addEventListener('DOMContentLoaded', function () {
  var table = document.getElementById('panelTable');
  if (!table) return;
  var headers = table.querySelectorAll('th.sortable');
  var activeColumn = -1;
  var ascending = true;
  function cellKey(row, column, type) {
    var cell = row.cells[column];
    var text = cell ? cell.textContent.trim() : '';
    if (column === 0) {
      var letter = text.length ? text.charAt(text.length - 1).toUpperCase() : '';
      var number = parseInt(text.split('/')[0], 10);
      return [letter, isNaN(number) ? -Infinity : number];
    }
    var raw = cell && cell.hasAttribute('data-value') ? cell.getAttribute('data-value') : text;
    if (type === 'number') {
      var value = parseFloat(String(raw).replace(/[^0-9.\-e]/g, ''));
      return [isNaN(value) ? -Infinity : value];
    }
    return [String(raw).toLowerCase()];
  }
  function compareKeys(a, b) {
    for (var i = 0; i < a.length; i++) {
      if (a[i] < b[i]) return -1;
      if (a[i] > b[i]) return 1;
    }
    return 0;
  }
  headers.forEach(function (header) {
    header.addEventListener('click', function () {
      var column = parseInt(header.getAttribute('data-column'), 10);
      var type = header.getAttribute('data-type');
      ascending = column === activeColumn ? !ascending : true;
      activeColumn = column;
      var body = table.tBodies[0];
      var entries = Array.prototype.map.call(body.rows, function (row, index) {
        return { row: row, index: index, key: cellKey(row, column, type) };
      });
      entries.sort(function (a, b) {
        var order = compareKeys(a.key, b.key);
        if (order !== 0) return ascending ? order : -order;
        return a.index - b.index;
      });
      entries.forEach(function (entry) { body.appendChild(entry.row); });
      headers.forEach(function (other) { other.textContent = other.getAttribute('data-label'); });
      header.innerHTML = header.getAttribute('data-label') +
        ' <span class="sort-arrow" style="color: #FFD700;">' + (ascending ? '&#9650;' : '&#9660;') + '</span>';
    });
  });
});
</script>
)JS";

const char* const COLUMN_SORT_SCRIPT = R"JS(<script>
(function () {
  var table = document.getElementById('panelTable');
  if (!table) return;
  var headers = table.querySelectorAll('th.sortable');
  headers.forEach(function (header) {
    header.addEventListener('click', function () {
      var column = parseInt(header.getAttribute('data-column'), 10);
      var type = header.getAttribute('data-type');
      var ascending = !header.classList.contains('asc');
      headers.forEach(function (other) { other.classList.remove('asc', 'desc'); });
      header.classList.add(ascending ? 'asc' : 'desc');
      var body = table.tBodies[0];
      var rows = Array.prototype.slice.call(body.rows);
      rows.sort(function (a, b) {
        var x = a.cells[column] ? a.cells[column].textContent.trim() : '';
        var y = b.cells[column] ? b.cells[column].textContent.trim() : '';
        var order;
        if (type === 'number') {
          order = (parseFloat(x.replace(/[^0-9.\-]/g, '')) || 0) - (parseFloat(y.replace(/[^0-9.\-]/g, '')) || 0);
        } else {
          order = x.localeCompare(y);
        }
        return ascending ? order : -order;
      });
      rows.forEach(function (row) { body.appendChild(row); });
    });
  });
})();
</script>
)JS";

}  // namespace

void WriteDataTable(std::FILE* file, const QStringList& csv) {
    const std::vector<QStringList> rows = ReportRows(csv, ROW_FIELDS);
    const Bands bands = RowBands(rows);
    PutText(file,
            "<style id='sort-css-injected'>\n"
            "#panelTable th.sortable { cursor: pointer; user-select: none; }\n"
            "#panelTable th.sortable:hover { background: #1e40af; }\n"
            "#panelTable .sort-arrow { font-size: 0.8em; margin-left: 4px; }\n"
            "</style>\n");
    PutText(file, "<h2>Complete Panel Analysis</h2>\n");
    PutText(file, "<p class='footer-text'>Tip: Click a column header to sort.</p>\n");
    PutText(file, "<div style='overflow-x: auto;'>\n<table id='panelTable'>\n");
    WriteHeader(file);
    for (const QStringList& row : rows) WriteRow(file, row, bands);
    PutText(file, "</tbody></table>\n");
    PutText(file, TABLE_SORT_SCRIPT);
    PutText(file, "</div>\n");
}

void WriteColumnSortScript(std::FILE* file) { PutText(file, COLUMN_SORT_SCRIPT); }
