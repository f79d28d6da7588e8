#include "Csv2SvgScript.h"

QString Csv2SvgPanZoomScript() {
    return QStringLiteral(
        "(function(){\n"
        "  var svg = document.documentElement;\n"
        "  function box(){ return svg.getAttribute('viewBox').split(' ').map(Number); }\n"
        "  function setBox(b){ svg.setAttribute('viewBox', b.join(' ')); }\n"
        "  var dragging = false, lastX = 0, lastY = 0;\n"
        "  svg.addEventListener('mousedown', function(e){ dragging = true; lastX = e.clientX; lastY = e.clientY; });\n"
        "  window.addEventListener('mouseup', function(){ dragging = false; });\n"
        "  svg.addEventListener('mousemove', function(e){\n"
        "    if (!dragging) return;\n"
        "    var b = box(), f = b[2] / svg.clientWidth;\n"
        "    b[0] -= (e.clientX - lastX) * f; b[1] -= (e.clientY - lastY) * f;\n"
        "    lastX = e.clientX; lastY = e.clientY; setBox(b);\n"
        "  });\n"
        "  svg.addEventListener('wheel', function(e){\n"
        "    e.preventDefault();\n"
        "    var p = svg.createSVGPoint(); p.x = e.clientX; p.y = e.clientY;\n"
        "    var c = p.matrixTransform(svg.getScreenCTM().inverse());\n"
        "    var k = e.deltaY > 0 ? 1.1 : 0.9, b = box();\n"
        "    setBox([c.x - (c.x - b[0]) * k, c.y - (c.y - b[1]) * k, b[2] * k, b[3] * k]);\n"
        "  }, {passive: false});\n"
        "})();\n");
}
