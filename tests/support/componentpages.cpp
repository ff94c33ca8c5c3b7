#include "tests/support/componentpages.h"

#include "src/componentitemwidget.h"
#include "src/componentwidget.h"
#include "tests/support/budgettext.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

namespace {

using TComponent = TNorvexaData::TComponent;
using TComponentInstance = TNorvexaData::TComponentInstance;
using TComponentItem = TNorvexaData::TComponentItem;

const int YEAR_SECTION = 3; // after day of week, month and day

template <typename TRecord>
TRecord* Named(std::vector<TRecord>* records, const QString& name)
{
    for (TRecord& record : *records) {
        if (record.name == name) {
            return &record;
        }
    }
    Fail_Missing("record " + name);
}

void Add_Probe(TNorvexa* document)
{
    document->Add_Component("Probe");
    document->Add_Component_Item("Probe", "Repeatability");
    document->Add_Component_Item("Probe", "Resolution");
    document->Update_Component_Item("Probe", "Repeatability", QString(), "0.003", false);
    document->Update_Component_Item("Probe", "Resolution", QString(), "0.004", false);
    document->Component_Add_Identifier("Probe", "SN 1");
    document->Component_Add_Identifier("Probe", "SN 2");
    document->Update_Component_Item("Probe", "Repeatability", "SN 1", "0.001", false);
    document->Update_Component_Item("Probe", "Repeatability", "SN 2", "0.002", true);

    Change_Component(document, "Probe", [](TComponent* component) {
        component->length = 100.0;
        component->expansion_coefficient = 0.0115;
        component->instances = {{"SN 1", "Nov 15 2026", "Nov 15 2027", 250.5, 0.0085},
                                {"SN 2", "last spring", "2027-03-03", 0.123456, 0.01}};
    });
}

void Add_Scale(TNorvexa* document)
{
    document->Add_Component("Scale");
    document->Add_Component_Item("Scale", "Drift");
    Change_Component(document, "Scale", [](TComponent* component) {
        component->mode = TNorvexaData::UC_MODE_INDIVIDUAL;
        component->export_equipment = true;
        component->limit_uncertainty_length = true;
    });
    Change_Item(document, "Scale", "Drift", [](TComponentItem* item) {
        item->expression = "Td*CTEm";
        item->distribution = TNorvexaData::DISTRIBUTION_U;
        item->expression_type = TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
        item->uc_type = TNorvexaData::UC_TYPE_A;
        item->sensitivity = 0.5;
    });
}

// The tree shows its entries sorted.
QString Expected_Tree(const TNorvexa& document)
{
    QStringList components;
    for (const QString& component : document.Enum_Components()) {
        QStringList items = document.Enum_Component_Items(component);
        items.sort();
        components << component + "(" + items.join(", ") + ")";
    }
    components.sort();
    return "Norvexa Data(" + components.join(", ") + ")";
}

QString In_Parentheses(const QWidget* widget, const QString& text)
{
    return widget->isEnabled() ? text : "(" + text + ")";
}

QAction* Action_Named(const QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions()) {
        if (action->text() == text) {
            return action;
        }
    }
    return nullptr;
}

// Runs in the menu's own event loop, which no exception may pass through.
void Click_In_Open_Menu(const QString& text)
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QAction* action = menu == nullptr ? nullptr : Action_Named(menu, text);

    if (action != nullptr) {
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
        return;
    }
    ADD_FAILURE() << "Not found: entry of the context menu " << text.toStdString();
    if (menu != nullptr) {
        menu->close();
    }
}

} // namespace

// Documents

TBudgetFile Workshop_Budget()
{
    TBudgetFile budget;
    Add_Probe(&budget.document);
    Add_Scale(&budget.document);

    TVariable wear;
    wear.name = "Wear";
    wear.description = "Probe";
    budget.variables = {wear};
    budget.groups = {{"Length", {"Probe", "Scale - Drift"}}};
    return budget;
}

void Change_Component(TNorvexa* document, const QString& component, const std::function<void(TComponent*)>& change)
{
    TComponent record = document->Component(document->Component_Index(component));
    change(&record);
    document->Update_Component(record);
}

void Change_Identifier(TNorvexa* document, const QString& component, const QString& identifier,
                       const std::function<void(TComponentInstance*)>& change)
{
    Change_Component(document, component, [&](TComponent* record) { change(Named(&record->instances, identifier)); });
}

void Change_Item(TNorvexa* document, const QString& component, const QString& item,
                 const std::function<void(TComponentItem*)>& change)
{
    Change_Component(document, component, [&](TComponent* record) { change(Named(&record->items, item)); });
}

QStringList State_Of(const TNorvexa& document)
{
    return QStringList(Expected_Tree(document)) + Budget_Text(document);
}

// What is there

QStringList TComponentPagesFixture::Saved_State()
{
    const QString path = Path(QStringLiteral("state %1.norvexa").arg(++d_saved_files));
    Save_As(path);
    return QStringList(Tree_Text()) + Budget_Text(Read_Budget(path).document);
}

void TComponentPagesFixture::Expect_Modified()
{
    TModalAnswer answer;
    answer.Click(QMessageBox::No);
    EXPECT_FALSE(d_editor.close());
}

void TComponentPagesFixture::Expect_Unmodified()
{
    const TModalAnswer watchdog;
    EXPECT_TRUE(d_editor.close());
    Show_Active(&d_editor);
}

QString TComponentPagesFixture::Component_Page() const
{
    if (!d_editor.findChild<TComponentWidget*>()->isEnabled()) {
        return "disabled";
    }
    QStringList identifiers;
    for (int row = 0; row < Identifiers()->count(); ++row) {
        const QListWidgetItem* entry = Identifiers()->item(row);
        identifiers << entry->text() + (entry->isSelected() ? "*" : "");
    }
    const auto* date = Find<QDateEdit>("calibration_date");
    const auto* due = Find<QDateEdit>("calibration_due_date");
    const QString dates =
        date->isEnabled() && due->isEnabled() ? date->text() + ", " + due->text() : date->text() + due->text();

    QStringList options(Find<QRadioButton>("mode_single")->isChecked() ? "individual" : "combined");
    options << QStringList(Find<QCheckBox>("mode_export_equipment")->isChecked() ? "hint" : QString());
    options << QStringList(Find<QCheckBox>("mode_limit_length")->isChecked() ? "limit" : QString());
    options.removeAll(QString());

    return QStringList({Find<QLabel>("component_title")->text() + ": " + identifiers.join(", "),
                        dates.isEmpty() ? "no dates" : dates,
                        Find<QLineEdit>("component_length")->text() + ", " +
                            Find<QLineEdit>("component_expansion_coefficient")->text(),
                        options.join(", ")})
        .join("; ");
}

QString TComponentPagesFixture::Item_Page() const
{
    if (!d_editor.findChild<TComponentItemWidget*>()->isEnabled()) {
        return "disabled";
    }
    const auto* expression = Find<QLineEdit>("expression");
    const auto* use_default = Find<QCheckBox>("use_default_expression");
    const QString length = Find<QRadioButton>("length_dependent")->isChecked() ? "dependent" : "independent";
    const QString kind = Find<QRadioButton>("temperature")->isChecked() ? "temperature" : "linear";

    return QStringList({Find<QLabel>("item_title")->text(),
                        Find<QComboBox>("uc_type")->currentText() + ", " +
                            Find<QComboBox>("distribution")->currentText() + ", " +
                            Find<QLineEdit>("sensitivity")->text(),
                        In_Parentheses(expression, expression->text()) + ", " +
                            In_Parentheses(use_default, use_default->isChecked() ? "default on" : "default off"),
                        length + " " + kind, Find<QLabel>("unit_label")->text()})
        .join("; ");
}

QListWidget* TComponentPagesFixture::Identifiers() const
{
    return Find<QListWidget>("identifier_list");
}

// Acts

void TComponentPagesFixture::Enter(const char* field, const QString& text)
{
    auto* edit = Find<QLineEdit>(field);
    Replace_Text(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void TComponentPagesFixture::Click_Option(const char* option)
{
    auto* button = Find<QAbstractButton>(option);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(20, button->height() / 2));
}

void TComponentPagesFixture::Enter_Year(const char* field, const char* year)
{
    auto* edit = Find<QDateEdit>(field);
    edit->clearFocus();
    edit->setFocus(Qt::TabFocusReason);
    for (int section = 0; section < YEAR_SECTION; ++section) {
        QTest::keyClick(edit, Qt::Key_Right, Qt::ControlModifier);
    }
    QTest::keyClicks(edit, year);
    QTest::keyClick(edit, Qt::Key_Return);
}

void TComponentPagesFixture::Rename(const QString& entry, const QString& name)
{
    Rename_Entry(Tree(), entry, name);
}

void TComponentPagesFixture::Remove_Entries(QMessageBox::StandardButton answer)
{
    d_answer.Click(answer);
    QTest::mouseClick(Find<QToolButton>("remove_budget_item"), Qt::LeftButton);
}

void TComponentPagesFixture::Choose_In_Context_Menu(const QString& text)
{
    const QPoint position = Tree()->visualItemRect(Tree()->currentItem()).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, Tree()->viewport()->mapToGlobal(position));

    QTimer::singleShot(0, &d_editor, [text]() { Click_In_Open_Menu(text); });
    QApplication::sendEvent(Tree()->viewport(), &event);
}

void TComponentPagesFixture::Select_Entries(const QStringList& names)
{
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const QString& name : names) {
        Click_Entry(Tree(), name, modifiers);
        modifiers = Qt::ControlModifier;
    }
}

void TComponentPagesFixture::Select_Identifier(const QString& name)
{
    Click_Entry(Identifiers(), name);
}

void TComponentPagesFixture::Add_Identifier(const QString& name)
{
    d_answer.Type_Name(name);
    QTest::mouseClick(Find<QToolButton>("add_identifier"), Qt::LeftButton);
}

void TComponentPagesFixture::Rename_Identifier(const QString& name, const QString& new_name)
{
    Rename_Entry(Identifiers(), name, new_name);
}

void TComponentPagesFixture::Remove_Identifiers(QMessageBox::StandardButton answer)
{
    d_answer.Click(answer);
    QTest::mouseClick(Find<QToolButton>("remove_identifier"), Qt::LeftButton);
}
