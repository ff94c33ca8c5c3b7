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

    /// Replaces the text and what Undo would bring back. An expression of more than 100,000 characters is shown in part
    /// and cannot be edited.
    void Show_Expression(const QString& expression);

    /// The whole expression: the text as it stands, or what has no room in the editor.
    QString Expression() const;

    /// Shows what is known about the text as it stands, or that it cannot be edited; the text is left alone.
    void Set_Hint(const TExpressionHint& hint);

private:
    TErrorLook d_error_look;
    QString d_whole; ///< the expression while it is too long to be edited
};
