#pragma once

#include "tests/support/componentpages.h"

#include <QByteArray>

/// The main window with the acts of a user who exports: a report is shown, its identifiers are chosen, an export button
/// is clicked. The dialogs are answered by `d_answer`, armed before, as in TEditorFixture.
class TExportFixture : public TComponentPagesFixture
{
protected:
    // What is there

    QByteArray Bytes(const QString& path) const;

    /// The files in a folder, hidden ones included; in the test's own folder if none is named.
    QStringList Files(const QString& folder = QString()) const;

    // Acts

    /// Turns to the report page and chooses the group.
    void Show_Report(const QString& group);

    /// Chooses with the mouse in the first row that carries the component's name.
    void Choose_Identifier(const QString& component, const QString& identifier);

    /// Types the range on the variables page and turns back to the report page.
    void Type_Range(const QString& start, const QString& end, const QString& increment);

    void Click_Export_CSV();
    void Click_Export_PDF();

    /// Exports to `path` through the button and the dialog.
    void Export_CSV(const QString& path);

    void Show_Page(const QString& label);
};
