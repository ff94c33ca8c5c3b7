#pragma once

#include "core/errorlook.h"

#include <QLineEdit>

/// A line editor for one number with the point as decimal separator. A text that is no finite number is shown in the
/// error colours, with a tool tip that says what is wrong; it counts as 0 (see Finite_Number).
class TNumberEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit TNumberEdit(QWidget* parent = nullptr);

    double Value() const;

    /// Shows `value` in fixed notation with `decimals` digits after the point.
    void Set_Value(double value, int decimals);

private:
    void Show_Validity(const QString& text);

    TErrorLook d_error_look;
};
