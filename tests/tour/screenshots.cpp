#include "tests/tour/screenshots.h"

#include "tests/tour/dialogs.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QDialog>
#include <QLabel>
#include <QTest>

TScreenshots::TScreenshots(const QString& examples, const QString& pictures) : TTour(pictures), d_examples(examples) {}

void TScreenshots::Follow()
{
    Open_File(d_examples.absoluteFilePath("cmm_length_0_1000.norvexa"));
    Look_At_Components();
    Look_At_Variables();
    Look_At_Groups();
    Look_At_Report();
    Look_At_Dialogs();
}

void TScreenshots::Look_At_Components()
{
    auto* tree = Find<QAbstractItemView>("budget_tree");

    Click_Entry(tree, "Workpiece");
    Take_Picture("component");
    Click_Entry(tree, "Expansion coefficient");
    Click_Entry(Find<QAbstractItemView>("identifier_list"), "Aluminium frame");
    Take_Picture("component-item");
}

void TScreenshots::Look_At_Variables()
{
    Turn_To_Page(Qt::Key_V);
    Take_Picture("variables");
}

void TScreenshots::Look_At_Groups()
{
    Turn_To_Page(Qt::Key_G);
    Click_Entry(Find<QAbstractItemView>("group_list"), "Workpiece on the machine");
    Take_Picture("report-groups");
}

void TScreenshots::Look_At_Report()
{
    Turn_To_Page(Qt::Key_R);
    Choose_Group("Workpiece on the machine");
    Expect_Text(Find<QLabel>("report_status")->text(), "Uc at length 1000.000 mm: 0.0020 mm", "the status line");
    Take_Picture("report");

    Turn_To_Page(Qt::Key_L);
    Take_Picture("log");
}

void TScreenshots::Look_At_Dialogs()
{
    Turn_To_Page(Qt::Key_C);
    Dialogs::Enter_Name("Level", [this](QDialog* dialog) { Take_Picture_Of(dialog, "name-dialog"); });
    QTest::mouseClick(Find<QAbstractButton>("add_budget_item"), Qt::LeftButton);
    Expect_Window_Active();

    Dialogs::Answer_Question(QDialogButtonBox::No, [this](QDialog* dialog) { Take_Picture_Of(dialog, "message-box"); });
    QTest::mouseClick(Find<QAbstractButton>("remove_budget_item"), Qt::LeftButton);
    Expect_Window_Active();
}
