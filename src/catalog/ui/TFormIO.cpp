#include "TFormIO.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/model/ModelSession.h"
#include "app/services/FileDialogs.h"
#include "catalog/BillboardLinks.h"
#include "measure/BillboardState.h"

namespace {

QPushButton* button(QWidget* parent, const char* objectName, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(objectName);
    b->setAccessibleName(caption);
    b->setAutoDefault(false);
    return b;
}

}  // namespace

TFormIO::TFormIO(QWidget* parent) : QDialog(parent) {
    setObjectName("FormIO");
    setWindowTitle("Associating links");
    auto* layout = new QVBoxLayout(this);
    ListBox1 = new QListWidget(this);
    ListBox1->setObjectName("ListBox1");
    ListBox1->setAccessibleName("Linked files");
    ListBox1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout->addWidget(ListBox1, 1);
    auto* row = new QHBoxLayout;
    QPushButton* associate = button(this, "AssociateFiles", "Associate files");
    QPushButton* open = button(this, "OpenSelectedFiles", "Open selected files");
    QPushButton* remove = button(this, "DeleteSelectedFiles", "Delete selected files");
    for (QPushButton* b : {associate, open, remove}) row->addWidget(b);
    layout->addLayout(row);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    for (QAbstractButton* b : box->buttons()) b->setAccessibleName(b->text().remove('&'));
    layout->addWidget(box);
    resize(600, 400);

    connect(associate, &QPushButton::clicked, this, &TFormIO::AssociateFilesClick);
    connect(open, &QPushButton::clicked, this, &TFormIO::OpenSelectedFilesClick);
    connect(remove, &QPushButton::clicked, this, &TFormIO::DeleteSelectedFilesClick);
    connect(ListBox1, &QListWidget::itemDoubleClicked, this, [](QListWidgetItem* item) { OpenLinkedFile(item->text()); });
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void TFormIO::setLinks(const QStringList& links) {
    ListBox1->clear();
    ListBox1->addItems(links);
}

QStringList TFormIO::links() const {
    QStringList result;
    for (int i = 0; i < ListBox1->count(); ++i) result.append(ListBox1->item(i)->text());
    return result;
}

void TFormIO::AssociateFilesClick() {
    const QString folder = QString::fromStdString(ModelFolder());
    setLinks(AddLinkedFiles(links(), OrvoOpenFiles("Associate files", "All files (*.*)|*.*", folder)));
}

void TFormIO::OpenSelectedFilesClick() {
    for (QListWidgetItem* item : ListBox1->selectedItems()) OpenLinkedFile(item->text());
}

void TFormIO::DeleteSelectedFilesClick() { qDeleteAll(ListBox1->selectedItems()); }

void Assignlinks1Click() {
    const QString name = billboardState().Billboard_Selected_IDText;
    if (name.isEmpty()) return;
    TFormIO form;
    form.setLinks(PopulateListBox(name));
    if (form.exec() == QDialog::Accepted) SaveListBoxPopulation(name, form.links());
}
