// The digitise button's menu and the modes its items arm. What the clicks
// then build belongs to digitising itself.
#pragma once

void DigitizeBtnClick(int roof);
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
