#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"

namespace {

constexpr int ROW_FIELDS = 27;
constexpr int FIRST_MONTH = 9;

// Equal months make max - min zero and the points undefined; that case is
// left unguarded, as the page has always drawn it.
const char* const CHART_SCRIPT = R"JS(<script>
(function () {
  var canvas = document.getElementById('monthlyChart');
  if (!canvas || !canvas.getContext) return;
  var ctx = canvas.getContext('2d');
  var months = ['Jan', 'Feb', 'Mar', 'Apr', 'May', 'Jun', 'Jul', 'Aug', 'Sep', 'Oct', 'Nov', 'Dec'];
  var min = Math.min.apply(null, monthlyData);
  var max = Math.max.apply(null, monthlyData);
  function x(i) { return 60 + 60 * i; }
  function y(value) { return 350 - (value - min) / (max - min) * 250; }
  ctx.fillStyle = '#ffffff';
  ctx.fillRect(0, 0, canvas.width, canvas.height);
  ctx.strokeStyle = '#cbd5e1';
  ctx.lineWidth = 1;
  ctx.beginPath();
  ctx.moveTo(40, 360);
  ctx.lineTo(740, 360);
  ctx.stroke();
  ctx.strokeStyle = '#2563eb';
  ctx.lineWidth = 4;
  ctx.beginPath();
  for (var i = 0; i < monthlyData.length; i++) {
    if (i === 0) ctx.moveTo(x(i), y(monthlyData[i])); else ctx.lineTo(x(i), y(monthlyData[i]));
  }
  ctx.stroke();
  ctx.textAlign = 'center';
  for (var j = 0; j < monthlyData.length; j++) {
    ctx.fillStyle = '#2563eb';
    ctx.beginPath();
    ctx.arc(x(j), y(monthlyData[j]), 4, 0, 2 * Math.PI);
    ctx.fill();
    ctx.fillStyle = '#334155';
    ctx.font = '12px Arial';
    ctx.fillText(months[j], x(j), 380);
    ctx.font = '11px Arial';
    ctx.strokeStyle = '#ffffff';
    ctx.lineWidth = 3;
    ctx.strokeText(monthlyData[j].toFixed(1) + ' kWh', x(j), y(monthlyData[j]) - 10);
    ctx.fillText(monthlyData[j].toFixed(1) + ' kWh', x(j), y(monthlyData[j]) - 10);
  }
  ctx.fillStyle = '#1e3a8a';
  ctx.font = 'bold 18px Arial';
  ctx.fillText('Total Monthly System Energy Production', 400, 30);
})();
</script>
)JS";

}  // namespace

void WriteMonthlyChart(std::FILE* file, const QStringList& csv) {
    double monthly[12] = {};
    for (const QStringList& row : ReportRows(csv, ROW_FIELDS))
        for (int month = 0; month < 12; ++month) monthly[month] += ReportNumber(row, FIRST_MONTH + month, 0);

    PutText(file,
            "<div class='explanation-page'>\n"
            "<div class='explanation-title'>Monthly Energy Production</div>\n"
            "<div style='overflow-x: auto; text-align: center;'>\n"
            "<canvas id='monthlyChart' width='800' height='400'></canvas>\n"
            "</div>\n</div>\n");
    PutText(file, "<script>\nvar monthlyData = [");
    for (int month = 0; month < 12; ++month) PutFormat(file, month ? ", %.1f" : "%.1f", monthly[month]);
    PutText(file, "];\n</script>\n");
    PutText(file, CHART_SCRIPT);
}
