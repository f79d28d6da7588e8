// The digitise button's menu and the modes its items arm. What the clicks
// then build belongs to digitising (measure/Digitising).
#pragma once

// Empties the outline's points, clears the roof work and the panel length
// before the menu opens.
void DigitizeBtnClick();
void Roofs1Click();
void Line1Click();
void Eelevatedpolygon1Click();
void PolygonMnuClick();
void Polygonwiththickness1Click();
void FlytrroughDigitizeClick();
void AreaMnuClick();
void BlockMenuClick();
void Facade1Click();
void AbortpopupClick();
// The set-up line, polygon, facade and flythrough share.
void MyLineClick();
