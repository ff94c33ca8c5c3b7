#pragma once

#include "core/errorlook.h"
#include "core/expressionhint.h"

#include <QLineEdit>

/// A line editor for an expression that shows by colours and tool tip what is wrong with it.
class TExpressionEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit TExpressionEdit(QWidget* parent = nullptr);

    /// Shows what is known about the text as it stands; the text is left alone.
    void Set_Hint(const TExpressionHint& hint);

private:
    TErrorLook d_error_look;
};
