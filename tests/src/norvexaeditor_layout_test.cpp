#include "core/messagebox.h"
#include "src/applicationlook.h"
#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "src/reportgroupwidget.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"
#include "tests/support/editorfixture.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QFontMetricsF>
#include <QFrame>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <string>

namespace {

QImage Picture(const QString& path)
{
    return QPixmap(path).toImage();
}

QImage Picture(const QIcon& icon)
{
    return icon.isNull() ? QImage() : icon.pixmap(icon.availableSizes().value(0)).toImage();
}

// Row, column, row span and column span of a widget.
QRect Grid_Cell(QWidget* widget)
{
    const auto* grid = qobject_cast<const QGridLayout*>(widget->parentWidget()->layout());
    if (grid == nullptr) {
        Fail_Missing("grid around " + widget->objectName());
    }
    int row = -1;
    int column = -1;
    int row_span = -1;
    int column_span = -1;
    grid->getItemPosition(grid->indexOf(widget), &row, &column, &row_span, &column_span);
    return {column, row, column_span, row_span};
}

QStringList Entry_Texts(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions) {
        texts << (action->isSeparator() ? QString("-") : action->text());
    }
    return texts;
}

class TNorvexaEditorLayout : public TEditorFixture
{
protected:
    QTabWidget* Pages() const { return Find<QTabWidget>("pages"); }

    TComponentWidget* Component_Page() const { return d_editor.findChild<TComponentWidget*>(); }
    TComponentItemWidget* Item_Page() const { return d_editor.findChild<TComponentItemWidget*>(); }

    // Left to right in the first tab.
    QList<QWidget*> Budget_Columns() const
    {
        const auto* grid = qobject_cast<QGridLayout*>(Pages()->widget(0)->layout());
        QList<QWidget*> columns;
        for (int column = 0; column < grid->columnCount(); ++column) {
            columns << grid->itemAtPosition(0, column)->widget();
        }
        return columns;
    }

    QMenu* Menu(int index) const { return d_editor.menuBar()->actions().value(index)->menu(); }

    // The box of the question that `act` leads to.
    static QWidget* Question_Of(const std::function<void()>& act)
    {
        QWidget* box = nullptr;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&box] {
            if (qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr) {
                box = QApplication::activeModalWidget();
            }
        });
        look.start(0);
        act();
        return box;
    }

    QStringList Choices(const QString& list) const
    {
        const auto* box = Find<QComboBox>(list);
        QStringList texts;
        for (int index = 0; index < box->count(); ++index) {
            texts << box->itemText(index);
        }
        return texts;
    }
};

// Window

TEST_F(TNorvexaEditorLayout, The_window_is_1101_by_801_pixels)
{
    EXPECT_EQ(d_editor.size(), QSize(1101, 801));
}

TEST_F(TNorvexaEditorLayout, The_window_accepts_drops)
{
    EXPECT_TRUE(d_editor.acceptDrops());
}

TEST_F(TNorvexaEditorLayout, The_title_names_program_and_version)
{
    EXPECT_EQ(d_editor.windowTitle(), "Norvexa Editor - Version 7.1");
}

TEST_F(TNorvexaEditorLayout, The_pages_stand_above_the_publisher_and_the_logo)
{
    EXPECT_EQ(Pages()->parentWidget(), d_editor.centralWidget());
    EXPECT_EQ(Grid_Cell(Pages()), QRect(0, 0, 2, 1));
    EXPECT_EQ(Grid_Cell(Find<QLabel>("publisher")), QRect(0, 1, 1, 1));
    EXPECT_EQ(Grid_Cell(Find<QLabel>("logo")), QRect(1, 1, 1, 1));
}

TEST_F(TNorvexaEditorLayout, The_publisher_line_holds_the_year_and_the_publisher)
{
    const QString text = Find<QLabel>("publisher")->text();
    const QRegularExpressionMatch match = QRegularExpression("^\u00a9 (\\d{4}) (.+)$").match(text);

    EXPECT_GE(match.captured(1).toInt(), 2024) << text.toStdString();
    EXPECT_LE(match.captured(1).toInt(), QDate::currentDate().year());
    EXPECT_EQ(match.captured(2), NORVEXA_PUBLISHER);
}

TEST_F(TNorvexaEditorLayout, The_publisher_line_is_8_point_italic_to_the_left)
{
    const auto* publisher = Find<QLabel>("publisher");

    EXPECT_EQ(publisher->font().pointSize(), 8);
    EXPECT_TRUE(publisher->font().italic());
    EXPECT_EQ(publisher->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    EXPECT_EQ(publisher->textFormat(), Qt::PlainText);
}

TEST_F(TNorvexaEditorLayout, The_logo_is_100_by_40_pixels)
{
    const auto* logo = Find<QLabel>("logo");

    EXPECT_EQ(logo->minimumSize(), QSize(100, 40));
    EXPECT_EQ(logo->maximumSize(), QSize(100, 40));
    ASSERT_NE(logo->pixmap(Qt::ReturnByValue).toImage(), QImage());
    EXPECT_EQ(logo->pixmap(Qt::ReturnByValue).toImage(), Picture(":/images/logo.png"));
}

TEST_F(TNorvexaEditorLayout, One_message_box_serves_every_question)
{
    const auto boxes = d_editor.findChildren<TMessageBox*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(boxes.size(), 1);
    Add_Component("Probe");
    Save_As(Path("mine.norvexa"));
    Add_Component("Scale");

    d_answer.Click(QMessageBox::No);
    EXPECT_EQ(Question_Of([this] { d_editor.close(); }), boxes.first());
    for (const char* action : {"action_new", "action_open"}) {
        d_answer.Click(QMessageBox::No);
        EXPECT_EQ(Question_Of([this, action] { Click_Tool(action); }), boxes.first()) << action;
    }
    d_answer.Choose_File(Path("mine"));
    d_answer.Click(QMessageBox::No);
    EXPECT_EQ(Question_Of([this] { Click_Tool("action_save_as"); }), boxes.first());
    d_answer.Click(QMessageBox::No);
    EXPECT_EQ(Question_Of([this] { Choose_In_Menu("Edit", "Remove Budget Item"); }), boxes.first());
}

// What the pages send on their way out must not reach a document that is gone.
TEST_F(TNorvexaEditorLayout, The_window_goes_while_a_name_is_being_typed)
{
    auto window = std::make_unique<TNorvexaEditor>();
    Show_Active(window.get());
    auto* tree = Child<QTreeWidget>(window.get(), "budget_tree");
    d_answer.Type_Name("Probe");
    QTest::mouseClick(Child<QToolButton>(window.get(), "add_budget_item"), Qt::LeftButton);
    Show_Active(window.get());
    Click_Entry(tree, "Probe");
    QTest::keyClick(tree, Qt::Key_F2);
    const QPointer<QLineEdit> editor = Open_Editor(tree);
    ASSERT_FALSE(editor.isNull());
    Replace_Text(editor, "Ruler");

    window.reset();

    EXPECT_TRUE(editor.isNull());
}

TEST_F(TNorvexaEditorLayout, The_window_goes_while_a_number_is_being_typed)
{
    auto window = std::make_unique<TNorvexaEditor>();
    Show_Active(window.get());
    d_answer.Type_Name("Probe");
    QTest::mouseClick(Child<QToolButton>(window.get(), "add_budget_item"), Qt::LeftButton);
    Show_Active(window.get());
    const QPointer<QLineEdit> field = Child<QLineEdit>(window.get(), "component_length");
    Replace_Text(field, "12");

    window.reset();

    EXPECT_TRUE(field.isNull());
}

// Pages

TEST_F(TNorvexaEditorLayout, The_tabs_are_in_their_order)
{
    QStringList labels;
    for (int index = 0; index < Pages()->count(); ++index) {
        labels << Pages()->tabText(index);
    }

    EXPECT_EQ(labels, QStringList({"Budget Components", "Variables", "Report Groups", "Report", "Log"}));
    EXPECT_NE(qobject_cast<TVariableWidget*>(Pages()->widget(1)), nullptr);
    EXPECT_NE(qobject_cast<TReportGroupWidget*>(Pages()->widget(2)), nullptr);
    EXPECT_NE(qobject_cast<TReportWidget*>(Pages()->widget(3)), nullptr);
    EXPECT_EQ(Pages()->widget(4), Find<QPlainTextEdit>("log"));
}

TEST_F(TNorvexaEditorLayout, The_budget_page_has_tree_component_and_item_between_lines)
{
    const QList<QWidget*> columns = Budget_Columns();

    ASSERT_EQ(columns.size(), 5);
    EXPECT_EQ(columns[0], Tree()->parentWidget());
    EXPECT_EQ(columns[2], Component_Page());
    EXPECT_EQ(columns[4], Item_Page());
    for (const int index : {1, 3}) {
        const auto* line = qobject_cast<QFrame*>(columns[index]);
        ASSERT_NE(line, nullptr);
        EXPECT_EQ(line->frameShape(), QFrame::VLine);
        EXPECT_EQ(line->frameShadow(), QFrame::Sunken);
    }
    for (int index = 1; index < columns.size(); ++index) {
        EXPECT_LT(columns[index - 1]->geometry().right(), columns[index]->geometry().left());
    }
}

TEST_F(TNorvexaEditorLayout, The_budget_page_has_no_margins)
{
    EXPECT_EQ(Pages()->widget(0)->layout()->contentsMargins(), QMargins());
}

TEST_F(TNorvexaEditorLayout, The_tree_stands_above_its_buttons)
{
    const auto* column = qobject_cast<QVBoxLayout*>(Tree()->parentWidget()->layout());

    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->contentsMargins(), QMargins());
    EXPECT_EQ(column->spacing(), 4);
    EXPECT_EQ(column->itemAt(0)->widget(), Tree());
    EXPECT_EQ(column->count(), 2);

    const QLayout* row = column->itemAt(1)->layout();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->count(), 3);
    EXPECT_EQ(row->itemAt(0)->widget(), Find<QToolButton>("add_budget_item"));
    EXPECT_EQ(row->itemAt(1)->widget(), Find<QToolButton>("remove_budget_item"));
    ASSERT_NE(row->itemAt(2)->spacerItem(), nullptr);
    EXPECT_EQ(row->itemAt(2)->expandingDirections(), Qt::Horizontal);
}

TEST_F(TNorvexaEditorLayout, The_buttons_of_the_tree_are_icons_of_16_by_16_pixels)
{
    for (const QString& name : {QString("add"), QString("remove")}) {
        const auto* button = Find<QToolButton>(name + "_budget_item");
        EXPECT_EQ(button->size(), QSize(16, 16));
        EXPECT_EQ(button->minimumSize(), button->maximumSize());
        ASSERT_FALSE(Picture(button->icon()).isNull());
        EXPECT_EQ(Picture(button->icon()), Picture(QString(":/gui/%1.png").arg(name)));
    }
}

TEST_F(TNorvexaEditorLayout, The_buttons_of_the_tree_have_names)
{
    EXPECT_EQ(Find<QToolButton>("add_budget_item")->accessibleName(), "Add Budget Item");
    EXPECT_EQ(Find<QToolButton>("remove_budget_item")->accessibleName(), "Remove Budget Item");
    EXPECT_EQ(Find<QToolButton>("add_budget_item")->toolTip(), "Add Budget Item");
    EXPECT_EQ(Find<QToolButton>("remove_budget_item")->toolTip(), "Remove Budget Item");
}

TEST_F(TNorvexaEditorLayout, The_tree_is_set_up_for_several_sorted_entries)
{
    EXPECT_EQ(Tree()->selectionMode(), QAbstractItemView::ExtendedSelection);
    EXPECT_TRUE(Tree()->isAnimated());
    EXPECT_TRUE(Tree()->isHeaderHidden());
    EXPECT_TRUE(Tree()->isSortingEnabled());
    EXPECT_EQ(Tree()->sortColumn(), 0);
    EXPECT_EQ(Tree()->header()->sortIndicatorOrder(), Qt::AscendingOrder);
    EXPECT_FALSE(Tree()->expandsOnDoubleClick());
}

TEST_F(TNorvexaEditorLayout, The_tree_shows_its_entries_in_ascending_order)
{
    Add_Component("Scale");
    Add_Component("Probe");
    Add_Component("Anvil");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Anvil(), Probe(), Scale())");
}

TEST_F(TNorvexaEditorLayout, A_click_beside_a_short_name_in_the_tree_selects_its_entry)
{
    Add_Component("Probe");
    Select_Entry("Norvexa Data");
    const int right_edge = Tree()->viewport()->width() - 3;
    const int height = Tree()->visualRect(Entry(Tree(), "Probe")).center().y();

    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(right_edge, height));

    EXPECT_EQ(Selected_Entries(), QStringList("Probe"));
}

TEST_F(TNorvexaEditorLayout, A_long_name_in_the_tree_is_scrolled_to_and_not_cut)
{
    const QString name = QString("Probe ").repeated(40).trimmed();
    Add_Component(name);

    EXPECT_GE(Tree()->visualRect(Entry(Tree(), name)).width(), Tree()->fontMetrics().horizontalAdvance(name));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Tree()->horizontalScrollBar()->isVisible(); }));
}

TEST_F(TNorvexaEditorLayout, A_double_click_does_not_fold_the_tree)
{
    Add_Component("Probe");
    const QModelIndex root = Entry(Tree(), "Norvexa Data");
    const QPoint position = Tree()->visualRect(root).center();

    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, position);
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, position);

    EXPECT_TRUE(Tree()->isExpanded(root));
}

TEST_F(TNorvexaEditorLayout, The_context_menu_of_the_tree_adds_and_removes)
{
    EXPECT_EQ(Tree()->contextMenuPolicy(), Qt::ActionsContextMenu);
    EXPECT_EQ(Tree()->actions(),
              QList<QAction*>({Action("action_add_budget_item"), Action("action_remove_budget_item")}));
}

TEST_F(TNorvexaEditorLayout, The_log_is_read_only_in_a_fixed_font_and_does_not_wrap)
{
    const auto* log = Find<QPlainTextEdit>("log");

    EXPECT_TRUE(log->isReadOnly());
    EXPECT_EQ(log->lineWrapMode(), QPlainTextEdit::NoWrap);
    EXPECT_EQ(log->font().family(), "Courier New");
    EXPECT_TRUE(log->font().fixedPitch());
    EXPECT_EQ(Log(), "");
}

TEST_F(TNorvexaEditorLayout, The_columns_of_the_log_line_up_on_the_screen)
{
    const QFontMetricsF metrics(Find<QPlainTextEdit>("log")->font());

    EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QString(20, 'i')), metrics.horizontalAdvance(QString(20, 'W')));
}

TEST_F(TNorvexaEditorLayout, The_item_page_offers_the_types_of_the_document)
{
    const TNorvexa document;

    EXPECT_EQ(Choices("distribution"), document.Distribution_Type_List());
    EXPECT_EQ(Choices("uc_type"), document.Uncertainty_Type_List());
    EXPECT_FALSE(Choices("distribution").isEmpty());
    EXPECT_FALSE(Choices("uc_type").isEmpty());
}

// Actions

struct TActionRow
{
    const char* name;
    const char* text;
    const char* shortcut;
    const char* icon;
    const char* whats_this;
    bool enabled;
    bool checkable;
    bool checked;
};

const TActionRow ACTIONS[] = {
    {"new", "&New...", "Ctrl+N", ":/actions/new.png", "Create a new uncertainty budget", true, false, false},
    {"open", "&Open...", "Ctrl+O", ":/actions/open.png", "Open an existing uncertainty budget", true, false, false},
    {"save", "&Save", "Ctrl+S", ":/actions/save.png", "Saves the current uncertainty budget", false, false, false},
    // The same shortcut as Save, on purpose.
    {"save_as", "&Save As", "Ctrl+S", ":/actions/save_as.png",
     "Saves the current uncertainty budget with a different file name", false, false, false},
    {"exit", "Exit Program", "", "", "", true, false, false},
    {"add_budget_item", "Add Budget Item", "", ":/gui/add.png", "", true, false, false},
    {"remove_budget_item", "Remove Budget Item", "", ":/gui/remove.png", "", false, false, false},
    {"components", "Budget &Components", "Alt+C", ":/actions/components.png",
     "Display the page for uncertainty components", true, true, true},
    {"variables", "&Variables", "Alt+V", ":/actions/variables.png", "Display the page for report variables", true, true,
     false},
    {"groups", "&Groups", "Alt+G", ":/actions/group.png", "Display the page for the report groups", true, true, false},
    {"report", "&Report", "Alt+R", ":/actions/report.png", "Display the page for the report", true, true, false},
    {"log", "&Log", "Alt+L", ":/actions/log.png", "Display the log page", true, true, false},
};

class TNorvexaEditorAction : public TEditorFixture, public ::testing::WithParamInterface<TActionRow>
{};

TEST_P(TNorvexaEditorAction, Is_as_the_table_says)
{
    const TActionRow& row = GetParam();
    const QAction* action = Action(QString("action_%1").arg(row.name));

    EXPECT_EQ(action->text(), row.text);
    EXPECT_EQ(action->shortcut().toString(), row.shortcut);
    EXPECT_EQ(action->shortcuts().size(), QString(row.shortcut).isEmpty() ? 0 : 1);
    EXPECT_EQ(action->icon().isNull(), QString(row.icon).isEmpty());
    EXPECT_EQ(Picture(action->icon()), Picture(QString(row.icon)));
    EXPECT_EQ(action->whatsThis(), row.whats_this);
    EXPECT_EQ(action->isEnabled(), row.enabled);
    EXPECT_EQ(action->isCheckable(), row.checkable);
    EXPECT_EQ(action->isChecked(), row.checked);
}

INSTANTIATE_TEST_SUITE_P(Table, TNorvexaEditorAction, ::testing::ValuesIn(ACTIONS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TNorvexaEditorLayout, There_are_no_other_actions)
{
    QStringList expected;
    for (const TActionRow& row : ACTIONS) {
        expected << QString("action_%1").arg(row.name);
    }
    QStringList names;
    for (const QAction* action : d_editor.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        names << action->objectName();
    }

    EXPECT_EQ(names, expected);
}

TEST_F(TNorvexaEditorLayout, Each_action_has_a_picture_of_its_own)
{
    QStringList paths;
    for (const TActionRow& row : ACTIONS) {
        if (*row.icon != '\0') {
            EXPECT_FALSE(Picture(QString(row.icon)).isNull()) << row.icon;
            paths << row.icon;
        }
    }
    for (int first = 0; first < paths.size(); ++first) {
        for (int second = first + 1; second < paths.size(); ++second) {
            EXPECT_NE(Picture(paths[first]), Picture(paths[second])) << paths[first].toStdString();
        }
    }
}

TEST_F(TNorvexaEditorLayout, The_tool_bar_holds_its_actions_in_their_order)
{
    const auto* bar = Find<QToolBar>("tool_bar");

    EXPECT_EQ(bar->orientation(), Qt::Horizontal);
    EXPECT_EQ(bar->iconSize(), QSize(32, 32));
    EXPECT_EQ(Entry_Texts(bar->actions()),
              QStringList({"&New...", "-", "&Open...", "&Save", "&Save As", "-", "Budget &Components", "&Variables",
                           "&Groups", "&Report", "&Log"}));
    EXPECT_EQ(bar->actions().value(0), Action("action_new"));
}

TEST_F(TNorvexaEditorLayout, The_menus_have_no_mnemonics_that_fight_with_shortcuts)
{
    EXPECT_EQ(Entry_Texts(d_editor.menuBar()->actions()), QStringList({"File", "Edit", "View"}));
}

TEST_F(TNorvexaEditorLayout, The_file_menu_leaves_Open_out)
{
    EXPECT_EQ(Entry_Texts(Menu(0)->actions()), QStringList({"&New...", "-", "&Save", "&Save As", "-", "Exit Program"}));
}

TEST_F(TNorvexaEditorLayout, The_edit_menu_ends_with_a_separator)
{
    EXPECT_EQ(Entry_Texts(Menu(1)->actions()), QStringList({"Add Budget Item", "Remove Budget Item", "-"}));
}

TEST_F(TNorvexaEditorLayout, The_view_menu_holds_the_pages)
{
    EXPECT_EQ(Entry_Texts(Menu(2)->actions()),
              QStringList({"Budget &Components", "&Variables", "&Groups", "&Report", "&Log"}));
}

TEST_F(TNorvexaEditorLayout, The_shortcut_of_Open_works_without_the_tool_bar)
{
    Find<QToolBar>("tool_bar")->hide();
    d_answer.Cancel_File();

    Press(Qt::Key_O, Qt::ControlModifier);

    EXPECT_EQ(d_answer.Seen_Count(), 1);
}

// Connections of the tree's actions and buttons

TEST_F(TNorvexaEditorLayout, The_add_button_adds_a_component)
{
    d_answer.Type_Name("Probe");

    QTest::mouseClick(Find<QToolButton>("add_budget_item"), Qt::LeftButton);

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
}

TEST_F(TNorvexaEditorLayout, The_add_action_adds_a_component)
{
    d_answer.Type_Name("Probe");

    Choose_In_Menu("Edit", "Add Budget Item");

    EXPECT_EQ(Tree_Text(), "Norvexa Data(Probe())");
}

TEST_F(TNorvexaEditorLayout, The_remove_button_removes_a_component)
{
    Add_Component("Probe");
    d_answer.Click(QMessageBox::Yes);

    QTest::mouseClick(Find<QToolButton>("remove_budget_item"), Qt::LeftButton);

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

TEST_F(TNorvexaEditorLayout, The_remove_action_removes_a_component)
{
    Add_Component("Probe");
    d_answer.Click(QMessageBox::Yes);

    Choose_In_Menu("Edit", "Remove Budget Item");

    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
}

// Initial state

TEST_F(TNorvexaEditorLayout, At_first_the_budget_page_is_in_front)
{
    EXPECT_EQ(Page(), "Budget Components");
    EXPECT_EQ(Checked_Pages(), QStringList("Budget Components"));
}

TEST_F(TNorvexaEditorLayout, At_first_the_tree_holds_the_selected_root)
{
    EXPECT_EQ(Tree_Text(), "Norvexa Data()");
    EXPECT_EQ(Selected_Entries(), QStringList("Norvexa Data"));
    EXPECT_EQ(Tree()->currentItem(), Tree()->topLevelItem(0));
}

TEST_F(TNorvexaEditorLayout, At_first_something_can_be_added_and_nothing_removed)
{
    EXPECT_TRUE(Action("action_add_budget_item")->isEnabled());
    EXPECT_TRUE(Find<QToolButton>("add_budget_item")->isEnabled());
    EXPECT_FALSE(Action("action_remove_budget_item")->isEnabled());
    EXPECT_FALSE(Find<QToolButton>("remove_budget_item")->isEnabled());
}

TEST_F(TNorvexaEditorLayout, At_first_component_and_item_page_are_disabled)
{
    EXPECT_FALSE(Component_Page()->isEnabled());
    EXPECT_FALSE(Item_Page()->isEnabled());
}

TEST_F(TNorvexaEditorLayout, At_first_nothing_is_there_to_save)
{
    EXPECT_EQ(Saving(), "");

    EXPECT_TRUE(d_editor.close());
    EXPECT_EQ(d_answer.Seen_Count(), 0);
}

TEST_F(TNorvexaEditorLayout, At_first_the_pages_are_empty)
{
    EXPECT_EQ(Groups(), QStringList());
    EXPECT_EQ(Available_Components(), QStringList());
    EXPECT_EQ(Offered_Groups(), QStringList("<no selection>"));
}

// Keyboard

TEST_F(TNorvexaEditorLayout, The_labels_of_the_pages_have_no_mnemonics)
{
    for (const QLabel* label : d_editor.findChildren<QLabel*>()) {
        EXPECT_FALSE(label->text().contains('&')) << label->text().toStdString();
    }
    for (const QAbstractButton* button : Pages()->findChildren<QAbstractButton*>()) {
        EXPECT_EQ(button->shortcut(), QKeySequence()) << button->text().toStdString();
    }
}

TEST_F(TNorvexaEditorLayout, The_tab_key_goes_down_the_tree_column_and_on_to_the_component)
{
    Add_Component("Probe");
    Tree()->setFocus();

    QStringList names;
    for (int step = 0; step < 3; ++step) {
        Press(Qt::Key_Tab);
        names << QApplication::focusWidget()->objectName();
    }

    EXPECT_EQ(names, QStringList({"add_budget_item", "remove_budget_item", "identifier_list"}));
}

// Program

TEST(TNorvexaProgram, The_application_icon_is_compiled_in)
{
    EXPECT_FALSE(Picture(QString(":/icons/norvexaeditor.png")).isNull());
}

TEST(TNorvexaProgram, Has_the_Fusion_style)
{
    QApplication::setStyle("windows");

    Set_Application_Look();

    EXPECT_EQ(QApplication::style()->objectName(), "fusion");
}

TEST(TNorvexaProgram, Has_the_application_icon_on_its_windows)
{
    QApplication::setWindowIcon(QIcon());

    Set_Application_Look();

    ASSERT_FALSE(QApplication::windowIcon().isNull());
    EXPECT_EQ(Picture(QApplication::windowIcon()), Picture(QString(":/icons/norvexaeditor.png")));
}

QProcessEnvironment Offscreen_Environment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    return environment;
}

TEST(TNorvexaProgram, Shows_its_window_and_stays_until_it_is_told_to_go)
{
    QProcess program;
    QProcessEnvironment environment = Offscreen_Environment();
    environment.insert("QT_LOGGING_RULES", "qt.widgets.painting=true");
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    QByteArray output;

    program.start(NORVEXA_PROGRAM, QStringList());
    ASSERT_TRUE(program.waitForStarted());
    const bool is_shown = QTest::qWaitFor(
        [&program, &output]() {
            output += program.readAll();
            return output.contains("TNorvexaEditor");
        },
        30000);

    EXPECT_TRUE(is_shown) << output.toStdString();
    EXPECT_EQ(program.state(), QProcess::Running) << output.toStdString();
    program.terminate();
    EXPECT_TRUE(program.waitForFinished());
}

TEST(TNorvexaProgram, Ends_in_good_order_once_its_window_is_closed)
{
    QProcess program;
    QProcessEnvironment environment = Offscreen_Environment();
    environment.insert("QT_PLUGIN_PATH", NORVEXA_TEST_PLUGINS);
    environment.insert("QT_QPA_GENERIC_PLUGINS", "closingwindow");
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);

    program.start(NORVEXA_PROGRAM, QStringList());
    ASSERT_TRUE(program.waitForFinished());

    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
}

} // namespace
