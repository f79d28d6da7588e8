#include "QtFileFilter.h"

#include <QRegularExpression>

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
            const QString pattern = raw.trimmed();
            for (const QString& form : {pattern, pattern.toLower(), pattern.toUpper()})
                if (!form.isEmpty() && !patterns.contains(form)) patterns.append(form);
        }
        if (patterns.isEmpty()) patterns.append(QStringLiteral("*"));
        filters.append(description + " (" + patterns.join(' ') + ")");
    }
    return filters;
}
