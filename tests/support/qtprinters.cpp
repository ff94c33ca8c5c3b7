#include "tests/support/qtprinters.h"

QT_BEGIN_NAMESPACE

void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

void PrintTo(const QStringList& texts, std::ostream* stream)
{
    *stream << "(\"" << texts.join("\", \"").toStdString() << "\")";
}

QT_END_NAMESPACE
