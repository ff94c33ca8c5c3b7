#include "tests/tour/manualpictures.h"

#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "src/variablewidget.h"
#include "tests/tour/dialogs.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolTip>

namespace {

// The pointer rests on the field, as it does when a user asks what is wrong with it; at its left end, so that the tip
// stays over the window.
void Show_Tool_Tip(QLineEdit* field)
{
    const QPoint place(2, field->height() / 2);
    QHelpEvent event(QEvent::ToolTip, place, field->mapToGlobal(place));

    QCoreApplication::sendEvent(field, &event);
}

} // namespace

TManualPictures::TManualPictures(const QString& examples, const QString& pictures, const QString& files)
    : TTour(pictures), d_examples(examples), d_files(files)
{}

void TManualPictures::Follow()
{
    Open_File(d_examples.absoluteFilePath("cmm_length_0_1000.norvexa"));
    Look_At_Components();
    Look_At_Expression();
    Look_At_Variables();
    Look_At_Groups();
    Look_At_Report();
    Export();
    Look_At_Errors();
}

void TManualPictures::Look_At_Components()
{
    auto* tree = Find<QAbstractItemView>("budget_tree");
    auto* identifiers = Find<QAbstractItemView>("identifier_list");

    Click_Entry(tree, "Workpiece");
    Take_Picture("components-page");
    Click_Entry(identifiers, "Aluminium frame");
    Take_Picture_Of(Window()->findChild<TComponentWidget*>(), "identifiers");

    Click_Entry(tree, "Expansion coefficient");
    Click_Entry(identifiers, "Aluminium frame");
    Expect_Text(Find<QLabel>("item_title")->text(), "Identifier: Aluminium frame", "the item page");
    Expect_Text(Find<QLineEdit>("expression")->text(), "0.00231*Td", "the expression");
    Take_Picture_Of(Window()->findChild<TComponentItemWidget*>(), "component-item");
}

void TManualPictures::Look_At_Expression()
{
    auto* expression = Find<QLineEdit>("expression");

    // Another component first: the identifier chosen above stays otherwise.
    Click_Entry(Find<QAbstractItemView>("budget_tree"), "Probing");
    Click_Entry(Find<QAbstractItemView>("budget_tree"), "Workpiece temperature");
    Replace_Text(expression, "CTEd*Tuncc");
    Show_Tool_Tip(expression);
    Expect(QToolTip::text().contains("Tuncc"), "the tool tip names the unknown variable: " + QToolTip::text());
    Take_Picture_Of(Window()->findChild<TComponentItemWidget*>(), "expression-hint");
    QToolTip::hideText();
    Replace_Text(expression, "CTEd*Tunc");
    QTest::keyClick(expression, Qt::Key_Return);
}

void TManualPictures::Look_At_Variables()
{
    Turn_To_Page(Qt::Key_V);
    Take_Picture("variables-page");

    auto* field = Find<QLineEdit>("machine_scale");
    const QString before = field->text();
    Replace_Text(field, "0,001");
    Show_Tool_Tip(field);
    Expect(QToolTip::isVisible(), "the field tells what is wrong with its text");
    const QLineEdit* last = Find<QLineEdit>("temperature_maximum");
    const QWidget* page = Window()->findChild<TVariableWidget*>();
    Take_Picture_Of(page, QRect(0, 0, page->width() / 2, last->mapTo(page, last->rect().bottomLeft()).y()),
                    "number-error");
    QToolTip::hideText();
    Replace_Text(field, before);
}

void TManualPictures::Look_At_Groups()
{
    Turn_To_Page(Qt::Key_G);
    Click_Entry(Find<QAbstractItemView>("group_list"), "Workpiece on the machine");
    Take_Picture("report-groups");
}

void TManualPictures::Look_At_Report()
{
    Turn_To_Page(Qt::Key_R);
    Choose_Group("Workpiece on the machine");
    Expect_Text(Find<QLabel>("report_status")->text(), "Uc at length 1000.000 mm: 0.0020 mm", "the status line");
    Take_Picture("report-page");
    Turn_To_Page(Qt::Key_L);
    Take_Picture("log-page");
}

void TManualPictures::Export()
{
    const QString file = d_files.absoluteFilePath("export.pdf");

    Turn_To_Page(Qt::Key_R);
    Dialogs::Choose_File(file);
    Click("export_pdf");
    Expect_Window_Active();
    Expect(QFileInfo(file).size() > 0, "the export is written: " + file);
}

// A click takes a member into the group or out of it; a new group starts with the members of the group before.
void TManualPictures::Choose_Members(const QStringList& members)
{
    auto* components = Find<QListWidget>("component_list");

    for (int row = 0; row < components->count(); ++row) {
        const QListWidgetItem* component = components->item(row);
        if (component->isSelected() != members.contains(component->text())) {
            Click_Entry(components, component->text());
        }
    }
}

// A length and a temperature cannot stand in one group.
void TManualPictures::Look_At_Errors()
{
    Turn_To_Page(Qt::Key_G);
    Dialogs::Enter_Name("Mixed");
    QTest::mouseClick(Find<QAbstractButton>("add_group"), Qt::LeftButton);
    Expect_Window_Active();
    Click_Entry(Find<QAbstractItemView>("group_list"), "Mixed");
    Choose_Members({"Probing", "Workpiece thermometry"});

    Turn_To_Page(Qt::Key_R);
    Choose_Group("Mixed");
    Expect(Find<QPlainTextEdit>("log")->toPlainText().contains("ERR:  Cannot mix linear and temperature expressions"),
           "the log tells what cannot stand in one group");
    Take_Picture("log-error");
}
