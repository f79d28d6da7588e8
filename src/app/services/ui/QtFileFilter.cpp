#include "QtFileFilter.h"

#include <QRegularExpression>

namespace {

// Every letter of a pattern as a set of both its cases: "Panels_*.DAE"
// finds "panels_1.dae" and "Panels_1.dae" alike.
QString anyCase(const QString& pattern) {
    QString out;
    for (const QChar c : pattern) {
        if (c.isLetter() && c.toLower() != c.toUpper())
            out += QString("[") + c.toLower() + c.toUpper() + "]";
        else
            out += c;
    }
    return out;
}

}  // namespace

QStringList QtNameFilters(const QString& filter) {
    const QStringList parts = filter.split('|');
    QStringList filters;
    for (qsizetype at = 0; at < parts.size(); at += 2) {
        QString description = parts[at].trimmed();
        // Qt reads the patterns from a final "(...)", so the old one goes.
        description.remove(QRegularExpression(QStringLiteral("\\s*\\([^()]*\\)\\s*$")));
        QStringList patterns;
        const QString given = at + 1 < parts.size() ? parts[at + 1] : QStringLiteral("*");
        for (const QString& raw : given.split(';', Qt::SkipEmptyParts)) {
            const QString pattern = anyCase(raw.trimmed());
            if (!pattern.isEmpty() && !patterns.contains(pattern)) patterns.append(pattern);
        }
        if (patterns.isEmpty()) patterns.append(QStringLiteral("*"));
        filters.append(description + " (" + patterns.join(' ') + ")");
    }
    return filters;
}
