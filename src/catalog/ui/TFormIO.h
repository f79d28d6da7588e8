// "Associating links": the files linked to one billboard, added with a file
// dialog, opened by association, removed from the list (never from disk).
#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;

class TFormIO : public QDialog {
    Q_OBJECT
public:
    explicit TFormIO(QWidget* parent = nullptr);
    void setLinks(const QStringList& links);
    QStringList links() const;
    QListWidget* listBox() const { return ListBox1; }

    void AssociateFilesClick();
    void OpenSelectedFilesClick();
    void DeleteSelectedFilesClick();

private:
    QListWidget* ListBox1 = nullptr;
};

// The popup menu's "Hyperlinks" for the selected billboard: the dialog over
// its links, saved on OK. Nothing happens without a selected billboard.
void Assignlinks1Click();
