#include "PanelPicking.h"

#include <cmath>

#include "PanelStore.h"

int GetPanelIndexFromCoordinates(double x, double y, double z) {
    const PanelStore& store = panelStore();
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        const PANEL& panel = store.panels[i];
        if (!panel.Active) continue;
        const TGIS_Point3D& LL = panel.Corners[0];
        const TGIS_Point3D& UL = panel.Corners[1];
        const TGIS_Point3D& LR = panel.Corners[3];
        const double e1x = UL.X - LL.X, e1y = UL.Y - LL.Y;
        const double e2x = LR.X - LL.X, e2y = LR.Y - LL.Y;
        const double px = x - LL.X, py = y - LL.Y;
        const double len1 = e1x * e1x + e1y * e1y;
        const double len2 = e2x * e2x + e2y * e2y;
        if (len1 < 1e-10 || len2 < 1e-10) continue;
        const double proj1 = (px * e1x + py * e1y) / len1;
        const double proj2 = (px * e2x + py * e2y) / len2;
        const double tol1 = store.GLOBALGAP_DISTANCE / std::sqrt(len1);
        const double tol2 = store.GLOBALGAP_DISTANCE / std::sqrt(len2);
        if (proj1 >= -tol1 && proj1 <= 1 + tol1 && proj2 >= -tol2 && proj2 <= 1 + tol2) return i;
    }
    return -1;
}
