#pragma once

#include "tests/support/darkpalette.h"
#include "tests/support/editorfixture.h"

#include <QList>

class QWidget;

/// The labels of the window's pages.
const char* const PAGE_LABELS[] = {"Budget Components", "Variables", "Report Groups", "Report", "Log"};

/// The visible widgets of one window that can have the focus.
QList<QWidget*> Focusable_Widgets(const QWidget* window);

/// The object name; the class name where there is none.
QString Name_Of(const QWidget* widget);

/// A page's label without its blanks, as the name of a test.
std::string Page_Test_Name(const ::testing::TestParamInfo<const char*>& page);

/// The main window with a budget of the examples open, and an entry selected wherever one can be, so that every field
/// of every page is enabled and filled.
class TFilledPagesFixture : public TEditorFixture
{
protected:
    TFilledPagesFixture();

    void Turn_To(const QString& page);

    /// A group that stands below the one chosen.
    void Choose_Report_Group(const QString& group);

    /// Makes the window active again: the offscreen platform may leave none active where a list or a text of help has
    /// popped up.
    void Show_Again();
};
