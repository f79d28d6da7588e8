// What the measuring tests share: the open-model fixture with a 40 m square
// roof at height 2 seen straight from above (100 x 80 pixels, 1 pixel is
// about 0.83 m on the roof), a model centre far from the origin, a scratch
// measurements folder and every measuring state reset.
#pragma once

#include <QDir>

#include "app/model/ModelOpenFixture.h"
#include "app/session/DispatchState.h"
#include "measure/BillboardState.h"
#include "measure/DigitiseState.h"
#include "measure/MeasureForms.h"
#include "measure/MeasureState.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/RoofPlane.h"
#include "support/GuiApplication.h"
#include "support/SceneBuilders.h"

class MeasureFixture : public ModelOpenFixture {
protected:
    static constexpr double CENTER_X = 180000, CENTER_Y = 660000, CENTER_Z = 40;

    void SetUp() override {
        testsupport::ensureGuiApplication();
        ModelOpenFixture::SetUp();
        resetDispatchState();
        resetDigitiseState();
        resetMeasureState();
        resetBillboardState();
        resetMeasureForms();
        resetPanelFormState();
        resetPanelStore();
        resetRoofState();
        testsupport::addLayer(testsupport::makeSquare("roof", 0, 0, 2, 40));
        At3d_SetCameraViewPoint(0, 0, 0);
        At3d_SetCameraDistance(60);
        At3d_RotateCamera(0, 90, 0, 0);
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = CENTER_X;
        f.OriginalobjectCenter[1] = CENTER_Y;
        f.OriginalobjectCenter[2] = CENTER_Z;
        modelSession().MEASUREMENTSFOLDER = dir.path("Measurements/");
        QDir().mkpath(QString::fromStdString(modelSession().MEASUREMENTSFOLDER));
    }

    // The local point on the roof under a pixel of the view.
    static bool roofPoint(int x, int y, double xyz[3]) {
        int hit = 0;
        return At3d_Get_Mesh_Location_At_Point(x, y, &hit, xyz, nullptr, nullptr, nullptr) && hit == AT3D_HIT;
    }
    QString measurements(const char* name) const {
        return QString::fromStdString(modelSession().MEASUREMENTSFOLDER) + name;
    }
};
