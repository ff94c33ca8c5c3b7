#include "core/numberedit.h"

#include "core/number.h"

namespace {

QString Error_Tool_Tip(const QString& text)
{
    if (text.contains(',')) {
        return TNumberEdit::tr("Not a number, counts as 0: use a point as decimal separator, not a comma.");
    }
    return TNumberEdit::tr("Not a number, counts as 0: write digits with a point as decimal separator.");
}

} // namespace

TNumberEdit::TNumberEdit(QWidget* parent) : QLineEdit(parent), d_error_look(this)
{
    connect(this, &QLineEdit::textChanged, this, &TNumberEdit::Show_Validity);
}

double TNumberEdit::Value() const
{
    return Finite_Number(text());
}

void TNumberEdit::Set_Value(double value, int decimals)
{
    setText(Fixed_Text(value, decimals));
}

void TNumberEdit::Show_Validity(const QString& text)
{
    d_error_look.Show(Is_Finite_Number(text) ? QString() : Error_Tool_Tip(text));
}
