#include "MeasureHooks.h"

#include <QPointer>

#include "TFormBillboard.h"
#include "TFormObjects.h"
#include "TForm_M.h"
#include "measure/BillboardState.h"
#include "measure/MeasureForms.h"

void InstallMeasureHooks(QWidget* parent) {
    MeasureForms& forms = measureForms();
    forms.measureDialog = [parent](MeasureDialogValues& values) {
        TForm_M form(parent);
        return form.run(values);
    };
    forms.billboardDialog = [parent](BillboardDialogValues& values) {
        TFormBillboard form(parent);
        return form.run(values, billboardState().ColorPanel);
    };
    // One icons form for the session, made when it is first asked for.
    auto icons = std::make_shared<QPointer<TFormObjects>>();
    forms.showIconsForm = [parent, icons](bool show) {
        if (!*icons) {
            if (!show) return;
            *icons = new TFormObjects(parent);
        }
        if (show)
            (*icons)->showIcons();
        else
            (*icons)->hide();
    };
}
