#pragma once

#include <QString>

class QWidget;

/// How an editor shows that its text is wrong: by colours that read well in light and dark themes alike, and by a tool
/// tip that says why. The editor's own tool tip comes back with its colours.
class TErrorLook
{
public:
    /// `editor` must outlive the look.
    explicit TErrorLook(QWidget* editor);

    /// Shows `reason`, a plain text; an empty one ends the error.
    void Show(const QString& reason);

private:
    QWidget* d_editor;
    QString d_own_tool_tip;
    bool d_shows_error = false;
};
