#include "core/entrydelegate.h"
#include "core/messagebox.h"
#include "core/optioneditor.h"
#include "src/exportprogress.h"
#include "src/namedialog.h"
#include "tests/support/filledpages.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTime>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWhatsThis>

namespace {

QString Buddy_Text(const QWidget* widget)
{
    for (const QLabel* label : widget->window()->findChildren<QLabel*>()) {
        if (label->buddy() == widget) {
            return label->text();
        }
    }
    return QString();
}

// What a screen reader calls the widget: its accessible name, its own text or the label whose buddy it is. Lists are
// not called after their labels, and a combo box gives its current text for its name.
QString Spoken_Name(QWidget* widget)
{
    if (qobject_cast<QComboBox*>(widget) != nullptr) {
        return widget->accessibleName() + Buddy_Text(widget);
    }
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

QStringList What_Is_Missing(QWidget* widget)
{
    QStringList missing;
    const auto Require = [&](const QString& text, const char* what) {
        if (text.trimmed().isEmpty()) {
            missing << Name_Of(widget) + ": " + what;
        }
    };

    Require(Spoken_Name(widget), "name");
    Require(widget->toolTip(), "tool tip");
    Require(widget->whatsThis(), "what's this");
    return missing;
}

QStringList What_Is_Missing(const QList<QWidget*>& widgets)
{
    QStringList missing;
    for (QWidget* widget : widgets) {
        missing << What_Is_Missing(widget);
    }
    return missing;
}

QWidget* What_Is_This_Window()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits("QWhatsThat")) {
            return window;
        }
    }
    return nullptr;
}

class TDescribedControls : public TFilledPagesFixture
{
protected:
    void TearDown() override { QWhatsThis::hideText(); }

    // Opens the editor in place of the entry that is selected.
    QWidget* Edit(QAbstractItemView* view)
    {
        view->setFocus();
        Press(Qt::Key_F2);
        QWidget* editor = Open_Editor<QWidget>(view);
        if (editor == nullptr) {
            Fail_Missing("editor in " + view->objectName());
        }
        return editor;
    }
};

class TDescribedPage : public TDescribedControls, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override { Turn_To(GetParam()); }
};

TEST_P(TDescribedPage, Has_a_name_a_tool_tip_and_a_text_of_help_for_each_control)
{
    const QList<QWidget*> widgets = Focusable_Widgets(&d_editor);

    EXPECT_GE(widgets.size(), 2);
    EXPECT_EQ(What_Is_Missing(widgets), QStringList());
}

TEST_P(TDescribedPage, Has_labels_that_lead_to_their_controls)
{
    const QStringList headings = {"Options:", "Variable Values:", "Output:"};

    for (const QLabel* label : d_editor.findChildren<QLabel*>()) {
        if (label->isVisible() && label->text().endsWith(':') && !headings.contains(label->text())) {
            EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        }
    }
}

TEST_P(TDescribedPage, Shows_the_text_of_help_on_Shift_and_F1)
{
    for (QWidget* widget : Focusable_Widgets(&d_editor)) {
        widget->setFocus();
        Press(Qt::Key_F1, Qt::ShiftModifier);
        EXPECT_NE(What_Is_This_Window(), nullptr) << Name_Of(widget).toStdString();
        QWhatsThis::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return What_Is_This_Window() == nullptr; }));
        Show_Again();
    }
}

INSTANTIATE_TEST_SUITE_P(, TDescribedPage, ::testing::ValuesIn(PAGE_LABELS), Page_Test_Name);

// Fields

struct TFieldUnit
{
    const char* page;
    const char* field;
    const char* unit;
};

const TFieldUnit FIELD_UNITS[] = {
    {"Budget Components", "component_length", "mm"},
    {"Budget Components", "component_expansion_coefficient", "um/m/C"},
    {"Variables", "machine_expansion_coefficient", "um/m/C"},
    {"Variables", "machine_scale", "mm"},
    {"Variables", "temperature_minimum", "C"},
    {"Variables", "temperature_maximum", "C"},
    {"Variables", "temperature_gradient", "C"},
    {"Variables", "standard_deviation", "mm"},
    {"Variables", "start_position", "mm"},
    {"Variables", "end_position", "mm"},
    {"Variables", "increment", "mm"},
};

class TDescribedField : public TDescribedControls, public ::testing::WithParamInterface<TFieldUnit>
{
protected:
    void SetUp() override { Turn_To(GetParam().page); }

    QLineEdit* Field() const { return Find<QLineEdit>(GetParam().field); }
};

TEST_P(TDescribedField, Says_its_unit)
{
    EXPECT_TRUE(Field()->toolTip().contains(QString(" in %1").arg(GetParam().unit)))
        << Field()->toolTip().toStdString();
    EXPECT_TRUE(Field()->whatsThis().contains(QString(", in %1").arg(GetParam().unit)))
        << Field()->whatsThis().toStdString();
}

TEST_P(TDescribedField, Has_its_tool_tip_again_when_its_text_is_a_number_again)
{
    const QString tool_tip = Field()->toolTip();

    Replace_Text(Field(), "1,5");
    const QString error = Field()->toolTip();
    Replace_Text(Field(), "1.5");

    EXPECT_TRUE(error.startsWith("Not a number")) << error.toStdString();
    EXPECT_EQ(Field()->toolTip(), tool_tip);
}

INSTANTIATE_TEST_SUITE_P(, TDescribedField, ::testing::ValuesIn(FIELD_UNITS),
                         [](const auto& row) { return row.param.field; });

// Lists and tabs

TEST_F(TDescribedControls, Lists_say_what_their_buttons_do)
{
    for (const char* name : {"budget_tree", "identifier_list", "variable_list", "group_list"}) {
        const QString text = Find<QAbstractItemView>(name)->whatsThis();
        for (const char* word : {"buttons", " add ", " remove "}) {
            EXPECT_TRUE(text.contains(word)) << name << word;
        }
    }
    EXPECT_TRUE(Find<QAbstractItemView>("variable_list")->whatsThis().contains(" rename "));
}

TEST_F(TDescribedControls, Tabs_say_what_their_pages_are_for)
{
    const auto* tabs = Find<QTabWidget>("pages");
    const QStringList actions = {"action_components", "action_variables", "action_groups", "action_report",
                                 "action_log"};

    for (int page = 0; page < tabs->count(); ++page) {
        EXPECT_EQ(tabs->tabToolTip(page), Action(actions.at(page))->whatsThis());
        EXPECT_EQ(tabs->tabWhatsThis(page), Action(actions.at(page))->whatsThis());
    }
}

// The tool bar and the calendar

TEST_F(TDescribedControls, The_buttons_of_the_tool_bar_are_described)
{
    int buttons = 0;

    for (QToolButton* button : Find<QToolBar>("tool_bar")->findChildren<QToolButton*>()) {
        if (button->isVisible()) {
            ++buttons;
            EXPECT_EQ(What_Is_Missing(button), QStringList());
        }
    }
    EXPECT_EQ(buttons, 9);
}

TEST_F(TDescribedControls, The_calendar_of_a_date_is_described)
{
    QCalendarWidget* calendar = Open_Calendar(Find<QDateEdit>("calibration_date"));

    EXPECT_FALSE(calendar->toolTip().isEmpty());
    EXPECT_FALSE(calendar->whatsThis().isEmpty());
    EXPECT_EQ(Spoken_Name(calendar->findChild<QAbstractItemView*>()), "Days");
    EXPECT_EQ(Spoken_Name(calendar->findChild<QSpinBox*>()), "Year");
}

// Editors in place

TEST_F(TDescribedControls, The_editors_of_entries_are_described)
{
    QList<QPair<const char*, const char*>> lists = {{"Budget Components", "budget_tree"},
                                                    {"Budget Components", "identifier_list"},
                                                    {"Report Groups", "group_list"}};

    for (const auto& list : lists) {
        Turn_To(list.first);
        QWidget* editor = Edit(Find<QAbstractItemView>(list.second));
        EXPECT_EQ(What_Is_Missing(editor), QStringList()) << list.second;
        Press(Qt::Key_Escape);
    }
}

TEST_F(TDescribedControls, The_choice_of_a_variables_component_is_described_as_the_list_is)
{
    Turn_To("Variables");
    auto* list = Find<QTreeWidget>("variable_list");
    Click_Entry(list, Entry(list, "Workpiece thermometry", 1));

    auto* editor = Open_Editor<QWidget>(list);

    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(Spoken_Name(editor), "Tunc");
    EXPECT_EQ(editor->toolTip(), list->toolTip());
    EXPECT_EQ(editor->whatsThis(), list->whatsThis());
}

TEST_F(TDescribedControls, Every_editor_of_an_option_is_described)
{
    TOptionEditorWidget list;
    list.setToolTip("The options");
    list.setWhatsThis("The options of the program.");
    list.AddLineEditorOption("Text", "value");
    list.AddPathEditorOption("Path", "/");
    list.AddDateTimeEditorOption("Date", QDateTime(QDate(2026, 1, 1), QTime(12, 0)));
    list.AddSelectionList("List", {"one", "two"}, 0);
    Show_Active(&list);

    for (int row = 0; row < list.topLevelItemCount(); ++row) {
        list.setCurrentItem(list.topLevelItem(row), 1);
        auto* editor = Open_Editor<QWidget>(&list);
        ASSERT_NE(editor, nullptr) << row;
        EXPECT_EQ(What_Is_Missing(editor), QStringList());
        EXPECT_EQ(What_Is_Missing(Focusable_Widgets(&list)), QStringList());
    }
}

// Dialogs

TEST(TDescribedDialogs, The_name_dialog_is_described)
{
    TNameDialog dialog;
    dialog.show();

    EXPECT_EQ(Focusable_Widgets(&dialog).size(), 3);
    EXPECT_EQ(What_Is_Missing(Focusable_Widgets(&dialog)), QStringList());
}

TEST(TDescribedDialogs, The_progress_of_an_export_is_described)
{
    TExportProgress progress(120);
    progress.show();

    EXPECT_EQ(Focusable_Widgets(&progress).size(), 1);
    EXPECT_EQ(What_Is_Missing(Focusable_Widgets(&progress)), QStringList());
    EXPECT_EQ(What_Is_Missing(Child<QProgressBar>(&progress, "progress_bar")), QStringList());
}

TEST(TDescribedDialogs, The_message_box_is_described)
{
    TMessageBox box(nullptr);
    box.setText("Data Not Saved");
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.show();

    EXPECT_EQ(What_Is_Missing({box.button(QMessageBox::Yes), box.button(QMessageBox::No)}), QStringList());
}

} // namespace
