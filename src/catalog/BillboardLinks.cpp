#include "BillboardLinks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/FileHelpers.h"
#include "app/services/GridFiles.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"

namespace {

GridRows readTable() {
    GridRows rows;
    if (!LoadCsvGrid(HyperlinksFile(), rows)) return {};
    return rows;
}

bool sameName(const QStringList& row, const QString& name) {
    return !row.isEmpty() && row.first().compare(name, Qt::CaseInsensitive) == 0;
}

}  // namespace

QString HyperlinksFile() {
    QString folder = QString::fromStdString(modelSession().MEASUREMENTSFOLDER);
    if (!folder.isEmpty() && !folder.endsWith('/')) folder += '/';
    return folder + "Hyperlinks.csv";
}

QStringList PopulateListBox(const QString& TheSymbolName) {
    for (const QStringList& row : readTable())
        if (sameName(row, TheSymbolName)) return row.mid(1);
    return {};
}

QString LinksCommaText(const QStringList& fields) {
    QStringList out;
    for (const QString& field : fields) {
        bool quote = field.isEmpty() && fields.size() > 1;
        for (const QChar c : field) quote = quote || c <= ' ' || c == '"' || c == ',';
        if (quote) {
            QString escaped = field;
            escaped.replace("\"", "\"\"");
            out.append("\"" + escaped + "\"");
        } else {
            out.append(field);
        }
    }
    return out.join(',');
}

bool SaveListBoxPopulation(const QString& TheSymbolName, const QStringList& links) {
    QString text;
    // Every line of the name goes, not only the first: a line left behind
    // would be the one found next time instead of the new one.
    for (const QStringList& row : readTable())
        if (!row.isEmpty() && !sameName(row, TheSymbolName)) text += LinksCommaText(row) + "\n";
    text += LinksCommaText(QStringList{TheSymbolName} + links) + "\n";
    const QString file = HyperlinksFile();
    OrvoCreateDir(QFileInfo(file).path());
    if (StringToFile(text, file)) return true;
    PrintRunLog("Cannot write %s\n", file.toUtf8().constData());
    return false;
}

QStringList AddLinkedFiles(const QStringList& links, const QStringList& chosen) {
    QStringList result = links;
    for (const QString& file : chosen)
        if (!result.contains(file)) result.append(file);
    return result;
}

bool OpenLinkedFile(const QString& file) {
    if (!QFileInfo::exists(file)) {
        MyShowMessage(file + "\nNot found");
        return false;
    }
    dialogService().openDocument(file);
    return true;
}
