#include "core/expressionnames.h"

#include <QRegularExpression>

namespace {

bool Begins_With_Letter(const QString& token)
{
    const uint first = token.toUcs4().value(0);
    const bool is_ascii_letter = (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');

    return is_ascii_letter || (first > 127 && QChar::isLetter(first));
}

} // namespace

QStringList Expression_Names(const QString& expression)
{
    static const QRegularExpression separators(QStringLiteral("[*+\\-/^,()]"));

    QString words = expression;
    words.replace(QStringLiteral("sumsq("), QStringLiteral(" "), Qt::CaseInsensitive);
    words.replace(QStringLiteral("sqrt("), QStringLiteral(" "), Qt::CaseInsensitive);
    words.replace(separators, QStringLiteral(" "));

    QStringList names;
    for (const QString& token : words.simplified().split(' ', Qt::SkipEmptyParts)) {
        if (Begins_With_Letter(token)) {
            names.append(token);
        }
    }
    names.removeDuplicates();
    return names;
}
