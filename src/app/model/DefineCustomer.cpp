#include "DefineCustomer.h"

#include "ModelPaths.h"
#include "ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "scene/engine_interface.h"

void DefineCustomer1Click() {
    ModelSession& model = modelSession();
    At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 1);
    dialogState().STOPKEYACTIVITY = true;
    QString customer = model.Customer;
    const bool ok = MyInputQuery(QStringLiteral("Customer definition"), QStringLiteral("Please define the customer"),
                                 customer);
    At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 0);
    dialogState().STOPKEYACTIVITY = false;
    if (!ok) return;
    model.Customer = customer;
    StringToFile(customer, QString::fromStdString(SideFile(ModelFolder(), "Customer.TXT")));
}
