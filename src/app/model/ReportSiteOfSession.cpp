#include "ReportSiteOfSession.h"

#include "ModelSession.h"
#include "app/session/MainFormState.h"
#include "geo/GeoState.h"
#include "scene/EngineSession.h"

ReportSite CurrentReportSite() {
    const ModelSession& model = modelSession();
    ReportSite site;
    site.modelFileName = model.GlobalModelFileName;
    site.customer = model.Customer;
    site.epsg = geoState().EPSG;
    site.modelOpen = engineSession().fileLoaded != 0;
    // Without a window (or before it is laid out) the picture takes the usual size.
    const int width = mainFormHost().viewPanelWidth();
    const int height = mainFormHost().viewPanelHeight();
    if (width > 0 && height > 0) {
        site.viewWidth = width;
        site.viewHeight = height;
    }
    return site;
}
