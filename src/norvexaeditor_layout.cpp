#include "src/norvexaeditor.h"

#include "core/describe.h"
#include "core/entrydelegate.h"
#include "core/messagebox.h"
#include "src/budgettree.h"
#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "src/iconbutton.h"
#include "src/logview.h"
#include "src/reportgroupwidget.h"
#include "src/reportwidget.h"
#include "src/variablewidget.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QSize WINDOW_SIZE(1101, 801);
const QSize LOGO_SIZE(100, 40);
const QSize TOOL_BAR_ICON_SIZE(32, 32);

struct TActionText
{
    const char* text;
    const char* shortcut;
    const char* icon;
    const char* whats_this;
};

QAction* Create_Action(QObject* parent, const char* object_name, const TActionText& text)
{
    auto* action = new QAction(QObject::tr(text.text), parent);
    action->setObjectName(object_name);
    action->setShortcut(QKeySequence(text.shortcut));
    action->setIcon(QIcon(text.icon));
    action->setWhatsThis(QObject::tr(text.whats_this));
    return action;
}

QAction* Create_Page_Action(QObject* parent, const char* object_name, const TActionText& text)
{
    QAction* action = Create_Action(parent, object_name, text);
    action->setCheckable(true);
    return action;
}

QFrame* Create_Vertical_Line()
{
    auto* line = new QFrame;
    line->setFrameShape(QFrame::VLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

QFont Log_Font()
{
    QFont font("Courier New");
    font.setFixedPitch(true);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}

QFont Publisher_Font(QFont font)
{
    font.setPointSize(8);
    font.setItalic(true);
    return font;
}

} // namespace

// Pages

void TNorvexaEditor::Create_Pages()
{
    d_tab_widget = new QTabWidget;
    d_tab_widget->setObjectName("pages");
    d_variable_widget = new TVariableWidget;
    d_report_group_widget = new TReportGroupWidget;
    d_report_widget = new TReportWidget;
    Create_Log();

    d_tab_widget->addTab(Create_Budget_Page(), tr("Budget Components"));
    d_tab_widget->addTab(d_variable_widget, tr("Variables"));
    d_tab_widget->addTab(d_report_group_widget, tr("Report Groups"));
    d_tab_widget->addTab(d_report_widget, tr("Report"));
    d_tab_widget->addTab(d_log, tr("Log"));
}

QWidget* TNorvexaEditor::Create_Budget_Page()
{
    QWidget* tree_column = Create_Tree_Column();
    d_component_widget = new TComponentWidget;
    d_component_item_widget = new TComponentItemWidget;

    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tree_column, 0, 0);
    layout->addWidget(Create_Vertical_Line(), 0, 1);
    layout->addWidget(d_component_widget, 0, 2);
    layout->addWidget(Create_Vertical_Line(), 0, 3);
    layout->addWidget(d_component_item_widget, 0, 4);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(2, 1);
    layout->setColumnStretch(4, 1);
    // The item page's own minimum width is fixed and may be less than its longest texts need.
    layout->setColumnMinimumWidth(4, d_component_item_widget->layout()->minimumSize().width());
    return page;
}

QWidget* TNorvexaEditor::Create_Tree_Column()
{
    Create_Budget_Tree();
    d_add_button = Create_Icon_Button("add_budget_item", ":/gui/add.png", tr("Add Budget Item"), nullptr);
    d_remove_button = Create_Icon_Button("remove_budget_item", ":/gui/remove.png", tr("Remove Budget Item"), nullptr);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(d_add_button);
    buttons->addWidget(d_remove_button);
    buttons->addStretch();

    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(d_budget_tree);
    layout->addLayout(buttons);
    return column;
}

void TNorvexaEditor::Create_Budget_Tree()
{
    d_budget_tree = new TBudgetTree;
    d_budget_tree->setObjectName("budget_tree");
    d_budget_tree->setAccessibleName(tr("Budget"));
    d_budget_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    d_budget_tree->setAnimated(true);
    d_budget_tree->setSortingEnabled(true);
    d_budget_tree->sortByColumn(0, Qt::AscendingOrder);
    d_budget_tree->setExpandsOnDoubleClick(false);
    d_budget_tree->setContextMenuPolicy(Qt::ActionsContextMenu);
    d_budget_tree_delegate = new TEntryDelegate(d_budget_tree);
}

void TNorvexaEditor::Create_Log()
{
    d_log = new TLogView;
    d_log->setObjectName("log");
    d_log->setAccessibleName(tr("Log"));
    d_log->setFont(Log_Font());
}

void TNorvexaEditor::Create_Central_Widget()
{
    auto* publisher = new QLabel(QString::fromUtf8("\u00a9 " NORVEXA_YEAR " " NORVEXA_PUBLISHER));
    publisher->setObjectName("publisher");
    publisher->setFont(Publisher_Font(publisher->font()));
    publisher->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    publisher->setTextFormat(Qt::PlainText);

    auto* logo = new QLabel;
    logo->setObjectName("logo");
    logo->setFixedSize(LOGO_SIZE);
    logo->setPixmap(QPixmap(":/images/logo.png"));

    auto* central = new QWidget;
    auto* layout = new QGridLayout(central);
    layout->addWidget(d_tab_widget, 0, 0, 1, 2);
    layout->addWidget(publisher, 1, 0);
    layout->addWidget(logo, 1, 1);
    setCentralWidget(central);
}

// Actions

void TNorvexaEditor::Create_Actions()
{
    d_action_new = Create_Action(this, "action_new",
                                 {"&New...", "Ctrl+N", ":/actions/new.png", "Create a new uncertainty budget"});
    d_action_open = Create_Action(this, "action_open",
                                  {"&Open...", "Ctrl+O", ":/actions/open.png", "Open an existing uncertainty budget"});
    d_action_save = Create_Action(this, "action_save",
                                  {"&Save", "Ctrl+S", ":/actions/save.png", "Saves the current uncertainty budget"});
    // The same shortcut as Save, on purpose: the key saves under a name while there is nothing to save otherwise, and
    // saves as ever when both are enabled (see eventFilter).
    d_action_save_as = Create_Action(this, "action_save_as",
                                     {"&Save As", "Ctrl+S", ":/actions/save_as.png",
                                      "Saves the current uncertainty budget with a different file name"});
    d_action_exit = Create_Action(this, "action_exit", {"Exit Program", "", "", ""});
    d_action_add_item = Create_Action(this, "action_add_budget_item", {"Add Budget Item", "", ":/gui/add.png", ""});
    d_action_remove_item =
        Create_Action(this, "action_remove_budget_item", {"Remove Budget Item", "", ":/gui/remove.png", ""});

    d_action_components = Create_Page_Action(
        this, "action_components",
        {"Budget &Components", "Alt+C", ":/actions/components.png", "Display the page for uncertainty components"});
    d_action_variables =
        Create_Page_Action(this, "action_variables",
                           {"&Variables", "Alt+V", ":/actions/variables.png", "Display the page for report variables"});
    d_action_groups = Create_Page_Action(
        this, "action_groups", {"&Groups", "Alt+G", ":/actions/group.png", "Display the page for the report groups"});
    d_action_report = Create_Page_Action(
        this, "action_report", {"&Report", "Alt+R", ":/actions/report.png", "Display the page for the report"});
    d_action_log =
        Create_Page_Action(this, "action_log", {"&Log", "Alt+L", ":/actions/log.png", "Display the log page"});

    d_budget_tree->addActions({d_action_add_item, d_action_remove_item});
    d_action_save->installEventFilter(this);
    d_action_save_as->installEventFilter(this);
}

void TNorvexaEditor::Group_Actions()
{
    d_actions = new QActionGroup(this);
    d_actions->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    for (QAction* action : findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        d_actions->addAction(action);
    }
}

void TNorvexaEditor::Create_Tool_Bar()
{
    auto* tool_bar = new QToolBar(tr("Tool Bar"), this);
    tool_bar->setObjectName("tool_bar");
    tool_bar->setOrientation(Qt::Horizontal);
    tool_bar->setIconSize(TOOL_BAR_ICON_SIZE);
    tool_bar->addAction(d_action_new);
    tool_bar->addSeparator();
    tool_bar->addActions({d_action_open, d_action_save, d_action_save_as});
    tool_bar->addSeparator();
    tool_bar->addActions({d_action_components, d_action_variables, d_action_groups, d_action_report, d_action_log});
    addToolBar(tool_bar);
}

// No mnemonics in the titles: "&View" would take Alt+V away from the variables page.
void TNorvexaEditor::Create_Menus()
{
    // Open is reached from the tool bar and by its shortcut; the menu leaves it out on purpose.
    QMenu* file = menuBar()->addMenu(tr("File"));
    file->addAction(d_action_new);
    file->addSeparator();
    file->addActions({d_action_save, d_action_save_as});
    file->addSeparator();
    file->addAction(d_action_exit);
    addAction(d_action_open);

    QMenu* edit = menuBar()->addMenu(tr("Edit"));
    edit->addActions({d_action_add_item, d_action_remove_item});
    edit->addSeparator();

    QMenu* view = menuBar()->addMenu(tr("View"));
    view->addActions({d_action_components, d_action_variables, d_action_groups, d_action_report, d_action_log});
}

// What everything is for

void TNorvexaEditor::Describe_Tabs()
{
    const QList<QAction*> actions = Page_Actions();

    for (int page = 0; page < actions.size(); ++page) {
        d_tab_widget->setTabToolTip(page, actions.at(page)->whatsThis());
        d_tab_widget->setTabWhatsThis(page, actions.at(page)->whatsThis());
    }
    d_tab_widget->tabBar()->setAccessibleName(tr("Pages"));
    Describe(
        d_tab_widget->tabBar(), tr("The pages of the budget"),
        tr("The pages of the budget: the arrow keys left and right turn them, and so do Alt+C, Alt+V, Alt+G, Alt+R "
           "and Alt+L."));
}

void TNorvexaEditor::Describe_Tree_And_Log()
{
    Describe(
        d_budget_tree, tr("The components of the budget and their items"),
        tr("The components of the budget, each with the items that contribute to its uncertainty. Select a component "
           "or an item to see it on the right. F2 renames the selected entry. The buttons below the tree, and its "
           "context menu, add and remove entries."));
    d_add_button->setWhatsThis(
        tr("Asks for a name and adds a component where the root of the tree is selected, otherwise an item to the "
           "selected component."));
    d_remove_button->setWhatsThis(tr("Removes the selected components and items, after a question."));
    Describe(
        d_log, tr("How every figure came about, and what went wrong"),
        tr("How every figure of the last report or export came about, step by step, and the messages about what went "
           "wrong (they begin with ERR). Lengths are in mm, temperatures in C, expansion coefficients in mm/m/C."));
}

// State and connections

void TNorvexaEditor::Set_Initial_State()
{
    resize(WINDOW_SIZE);
    setAcceptDrops(true);
    // File managers offer a file's name as text too, which an editor would take instead of the window the file.
    for (QLineEdit* editor : findChildren<QLineEdit*>()) {
        editor->setAcceptDrops(false);
    }
    setWindowTitle(tr("Norvexa Editor - Version 7.1"));

    d_last_directory = QDir::homePath();

    d_action_save->setEnabled(false);
    d_action_save_as->setEnabled(false);
    d_action_components->setChecked(true);
    d_tab_widget->setCurrentIndex(0);

    d_message_box = new TMessageBox(this);
    d_message_box->setWindowTitle(tr("Norvexa Editor"));
    d_component_item_widget->Reset_Distribution_Types(d_norvexa.Distribution_Type_List());
    d_component_item_widget->Reset_Uncertainty_Types(d_norvexa.Uncertainty_Type_List());
    Update_BudgetTree();
    Select_BudgetTree_Item(QString(), QString());
    BudgetTree_Selection_Changed();
}

void TNorvexaEditor::Connect_Signals()
{
    Connect_Actions();
    Connect_Budget_Tree();
    Connect_Pages();
    connect(d_tab_widget, &QTabWidget::currentChanged, this, &TNorvexaEditor::Tab_Selection_Changed);
    connect(qApp, &QApplication::focusChanged, this, &TNorvexaEditor::Watch_Focused_Editor);
}

void TNorvexaEditor::Connect_Actions()
{
    connect(d_action_new, &QAction::triggered, this, &TNorvexaEditor::New);
    connect(d_action_open, &QAction::triggered, this, &TNorvexaEditor::Open);
    connect(d_action_save, &QAction::triggered, this, &TNorvexaEditor::Save);
    connect(d_action_save_as, &QAction::triggered, this, &TNorvexaEditor::SaveAs);
    connect(d_action_exit, &QAction::triggered, this, &TNorvexaEditor::Exit);

    connect(d_action_log, &QAction::triggered, this, &TNorvexaEditor::View_Log);
    connect(d_action_report, &QAction::triggered, this, &TNorvexaEditor::View_Report);
    connect(d_action_groups, &QAction::triggered, this, &TNorvexaEditor::View_Groups);
    connect(d_action_variables, &QAction::triggered, this, &TNorvexaEditor::View_Variables);
    connect(d_action_components, &QAction::triggered, this, &TNorvexaEditor::View_Budget_Data);
}

void TNorvexaEditor::Connect_Budget_Tree()
{
    connect(d_action_remove_item, &QAction::triggered, this, &TNorvexaEditor::BudgetTree_Remove_Item);
    connect(d_remove_button, &QToolButton::clicked, this, &TNorvexaEditor::BudgetTree_Remove_Item);
    connect(d_action_add_item, &QAction::triggered, this, &TNorvexaEditor::BudgetTree_Add_Item);
    connect(d_add_button, &QToolButton::clicked, this, &TNorvexaEditor::BudgetTree_Add_Item);

    connect(d_budget_tree, &QTreeWidget::itemSelectionChanged, this, &TNorvexaEditor::BudgetTree_Selection_Changed);
    connect(d_budget_tree_delegate, &TEntryDelegate::commitData, this, &TNorvexaEditor::BudgetTree_Rename_Item);
}

void TNorvexaEditor::Connect_Pages()
{
    connect(d_component_widget, &TComponentWidget::Add_Component_Identifier, this,
            &TNorvexaEditor::Component_Add_Identifier);
    connect(d_component_widget, &TComponentWidget::Rename_Component_Identifiers, this,
            &TNorvexaEditor::Component_Rename_Identifier);
    connect(d_component_widget, &TComponentWidget::Remove_Component_Identifiers, this,
            &TNorvexaEditor::Component_Remove_Identifiers);
    connect(d_component_widget, &TComponentWidget::Component_Changed, this, &TNorvexaEditor::Component_Data_Changed);
    connect(d_component_widget, &TComponentWidget::Component_Identifier_Selected, this,
            &TNorvexaEditor::Component_Identifier_Selected);
    connect(d_component_item_widget, &TComponentItemWidget::Component_Item_Changed, this,
            &TNorvexaEditor::Component_Item_Data_Changed);
    connect(d_component_item_widget, &TComponentItemWidget::Expression_Text_Changed, this,
            &TNorvexaEditor::Update_Expression_Hint);

    connect(d_variable_widget, &TVariableWidget::Variable_Changed, this, &TNorvexaEditor::Variable_Data_Chanaged);
    connect(d_report_group_widget, &TReportGroupWidget::Report_Groups_Changed, this,
            &TNorvexaEditor::Report_Groups_Changed);
    connect(d_report_widget, &TReportWidget::Create_Report, this, &TNorvexaEditor::Update_Report_View);
    connect(d_report_widget, &TReportWidget::Create_Export_Report, this, &TNorvexaEditor::Generate_Export_Report);
}
