#include "tests/support/filledpages.h"

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>

QList<QWidget*> Focusable_Widgets(const QWidget* window)
{
    QList<QWidget*> widgets;

    for (QWidget* widget : window->findChildren<QWidget*>()) {
        // A line edit within a date editor hands its focus on to the editor.
        if (widget->window() == window && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
            widget->focusProxy() == nullptr) {
            widgets << widget;
        }
    }
    return widgets;
}

QString Name_Of(const QWidget* widget)
{
    return widget->objectName().isEmpty() ? QString(widget->metaObject()->className()) : widget->objectName();
}

std::string Page_Test_Name(const ::testing::TestParamInfo<const char*>& page)
{
    std::string name = page.param;
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name;
}

TFilledPagesFixture::TFilledPagesFixture()
{
    Drop_Files({QString(NORVEXA_EXAMPLES) + "/cmm_length_0_1000.norvexa"});
    Turn_To("Report Groups");
    Click_Entry(Find<QListWidget>("group_list"), "Machine alone");
    Turn_To("Report");
    Choose_Report_Group("Workpiece on the machine");
    Turn_To("Variables");
    Click_Entry(Find<QTreeWidget>("variable_list"), "Tunc");
    Turn_To("Budget Components");
    Select_Entry("Length error");
    Click_Entry(Find<QListWidget>("identifier_list"), "CMM 2");
}

void TFilledPagesFixture::Turn_To(const QString& page)
{
    Select_Tab(Find<QTabWidget>("pages"), page);
}

// Without opening the list: the offscreen platform leaves no window active where one has popped up.
void TFilledPagesFixture::Choose_Report_Group(const QString& group)
{
    auto* box = Find<QComboBox>("report_group");

    while (box->currentText() != group && box->currentIndex() < box->count() - 1) {
        QTest::keyClick(box, Qt::Key_Down);
    }
}

void TFilledPagesFixture::Show_Again()
{
    QCoreApplication::processEvents();
    Show_Active(&d_editor);
}
