#include "src/expressionedit.h"

#include "core/xmltext.h"

namespace {

// What a tool tip has room for.
const int MOST_NAMES = 10;
const int LONGEST_NAME = 40;

// In characters; the layout of a longer line would keep the user waiting at each key.
const int LONGEST_EDITED = 100000;

QString Shortened(const QString& name)
{
    return name.size() > LONGEST_NAME ? name.left(LONGEST_NAME) + QStringLiteral("...") : name;
}

QString Name_List(const QStringList& names)
{
    QStringList shown;
    for (const QString& name : names.mid(0, MOST_NAMES)) {
        shown << Shortened(name);
    }
    const QString list = shown.join(QStringLiteral(", "));
    const int others = names.size() - shown.size();
    return others > 0 ? TExpressionEdit::tr("%1 and %2 more").arg(list, QString::number(others)) : list;
}

/// Empty if nothing is wrong.
QString Reason(const TExpressionHint& hint, const QString& expression)
{
    QStringList reasons;

    if (!hint.is_valid && Xml_Is_Blank(expression)) {
        return TExpressionEdit::tr("An empty expression is refused: the one before comes back.");
    }
    if (!hint.is_valid) {
        reasons << TExpressionEdit::tr("The expression cannot be evaluated.");
    }
    if (!hint.undefined_names.isEmpty()) {
        reasons << TExpressionEdit::tr("Nothing defines these variables: %1").arg(Name_List(hint.undefined_names));
    }
    return reasons.join('\n');
}

} // namespace

TExpressionEdit::TExpressionEdit(QWidget* parent) : QLineEdit(parent), d_error_look(this)
{
    setMaxLength(LONGEST_EDITED);
}

void TExpressionEdit::Show_Expression(const QString& expression)
{
    const int cursor = cursorPosition();
    const bool is_same = expression == Expression();

    // Also a text that stays as it is: Undo would bring back what stood there for another item.
    setText(expression);
    if (is_same) {
        setCursorPosition(cursor);
    }
    setReadOnly(expression.size() > maxLength());
    d_whole = isReadOnly() ? expression : QString();
}

QString TExpressionEdit::Expression() const
{
    return isReadOnly() ? d_whole : text();
}

void TExpressionEdit::Set_Hint(const TExpressionHint& hint)
{
    d_error_look.Show(isReadOnly() ? tr("The expression is too long to be edited here.") : Reason(hint, text()));
}
