#include "tests/monkey/memory.h"

#include "core/numberedit.h"
#include "core/xmltext.h"
#include "tests/monkey/files.h"
#include "tests/support/guiacts.h"
#include "tests/support/heldrecords.h"
#include "tests/support/numberfields.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTreeWidget>

#include <algorithm>

namespace {

const QString EXPRESSION = QStringLiteral("expression");

/// A box or one of two radio buttons, and the field that a click on it sets.
struct TBox
{
    const char* name;
    const char* field;
    bool is_inverse;
};

const TBox BOXES[] = {{"mode_export_equipment", "mode_export_equipment", false},
                      {"mode_limit_length", "mode_limit_length", false},
                      {"mode_single", "mode_single", false},
                      {"mode_sum", "mode_single", true},
                      {"length_dependent", "length_dependent", false},
                      {"length_independent", "length_dependent", true},
                      {"temperature", "temperature", false},
                      {"linear", "temperature", true}};

bool Is_Input(const QString& field)
{
    return Number_Fields::Of_Inputs().contains(field);
}

bool Is_Of_Item(const QString& field)
{
    return field == EXPRESSION || field == "sensitivity" || field == "uc_type" || field == "distribution" ||
           field == "length_dependent" || field == "temperature";
}

// Of the component itself, whichever identifier is selected.
bool Is_Of_Identifier(const QString& field)
{
    return field == EXPRESSION || field == "component_length" || field == "component_expansion_coefficient";
}

/// The record as far as it matters for that field.
TShownRecord Record_For(const QString& field, const TShownRecord& shown)
{
    TShownRecord record;

    if (!Is_Input(field)) {
        record.component = shown.component;
        record.item = Is_Of_Item(field) ? shown.item : QString();
        record.identifier = Is_Of_Identifier(field) ? shown.identifier : QString();
    }
    return record;
}

bool operator==(const TShownRecord& left, const TShownRecord& right)
{
    return left.component == right.component && left.item == right.item && left.identifier == right.identifier;
}

QString Item_Text(const TNorvexaData::TComponentItem& item, const QString& field, const QString& identifier)
{
    const TNorvexa texts;

    if (field == EXPRESSION) {
        return Applied_Expression(item, identifier);
    }
    if (field == "uc_type") {
        return texts.UCType(item.uc_type);
    }
    if (field == "distribution") {
        return texts.Distribution_Type(item.distribution);
    }
    return Yes_No(field == "temperature" ? Is_Temperature(item) : Is_Length_Dependent(item));
}

QString Component_Text(const TNorvexaData::TComponent& component, const QString& field)
{
    if (field == "mode_single") {
        return Yes_No(component.mode == TNorvexaData::UC_MODE_INDIVIDUAL);
    }
    return Yes_No(field == "mode_limit_length" ? component.limit_uncertainty_length : component.export_equipment);
}

// What of a budget a field shows for that record; empty where the budget has no such record.
QString Held_Text(const TBudget& budget, const TShownRecord& record, const QString& field)
{
    if (Number_Fields::Decimals(field) >= 0) {
        return QString::number(Held_Number(budget, record, field), 'g', 17);
    }
    if (Is_Of_Item(field)) {
        const TNorvexaData::TComponentItem* item = Held_Item(budget, record);
        return item == nullptr ? QString() : Item_Text(*item, field, record.identifier);
    }
    const TNorvexaData::TComponent* component = Named(budget.components, record.component);
    return component == nullptr ? QString() : Component_Text(*component, field);
}

int Count(const QTreeWidgetItem* parent, const QString& name, const QTreeWidgetItem** last)
{
    int count = 0;
    for (int row = 0; row < parent->childCount(); ++row) {
        if (Escaped(parent->child(row)->text(0)) == name) {
            ++count;
            *last = parent->child(row);
        }
    }
    return count;
}

} // namespace

TMemory::TMemory(const TFiles* files) : d_files(files) {}

// What is watched: signals that only a user's act gives

void TMemory::Watch(QMainWindow* window)
{
    d_window = window;
    Forget_All();
    d_has_fine_numbers = false;
    Watch_Texts();
    Watch_Choices();
    Watch_Boxes();
    QObject::connect(Child<QAction>(window, "action_new"), &QAction::triggered, window,
                     [this]() { d_may_leave_budget = true; });
    QObject::connect(Child<QTreeWidget>(window, "budget_tree")->model(), &QAbstractItemModel::modelReset, window,
                     [this]() { d_is_tree_rebuilt = true; });
    // Who leaves a name that is being typed by another act may find another component, or a new entry of the old name,
    // when that is done.
    QObject::connect(Child<QListWidget>(window, "identifier_list"), &QListWidget::itemChanged, window,
                     [this]() { Forget_Gone_Records(); });
    QObject::connect(Child<QTreeWidget>(window, "budget_tree"), &QTreeWidget::itemChanged, window,
                     [this]() { Forget_Gone_Records(); });
}

void TMemory::Watch_Texts()
{
    for (const QString& field : Number_Fields::Of_Records() + Number_Fields::Of_Inputs() + QStringList(EXPRESSION)) {
        const auto* edit = Child<QLineEdit>(d_window, field);

        QObject::connect(edit, &QLineEdit::textEdited, d_window,
                         [this, field](const QString& text) { Type(field, text); });
        QObject::connect(edit, &QLineEdit::editingFinished, d_window, [this, field]() { Enter(field); });
    }
}

void TMemory::Watch_Choices()
{
    for (const QString field : {"uc_type", "distribution"}) {
        const auto* box = Child<QComboBox>(d_window, field);

        QObject::connect(box, QOverload<int>::of(&QComboBox::activated), d_window, [this, field, box](int index) {
            Keep({Record_For(field, Shown_Record(d_window)), field, box->itemText(index)});
        });
    }
}

void TMemory::Watch_Boxes()
{
    for (const TBox& box : BOXES) {
        QObject::connect(
            Child<QAbstractButton>(d_window, box.name), &QAbstractButton::clicked, d_window,
            [this, box](bool is_checked) {
                Keep({Record_For(box.field, Shown_Record(d_window)), box.field, Yes_No(is_checked != box.is_inverse)});
            });
    }
    QObject::connect(Child<QAbstractButton>(d_window, "use_default_expression"), &QAbstractButton::clicked, d_window,
                     [this]() { Forget_Expressions(); });
}

// What is known

// The variables page needs no end of the typing.
void TMemory::Type(const QString& field, const QString& text)
{
    d_typed[field] = {Record_For(field, Shown_Record(d_window)), field, text};
    d_has_fine_numbers = d_has_fine_numbers || Number_Fields::Is_Too_Fine(field, text);
    if (Is_Input(field)) {
        Enter(field);
    }
}

// A blank expression is refused: the one before comes back.
void TMemory::Enter(const QString& field)
{
    if (!d_typed.contains(field)) {
        return;
    }
    TEdit edit = d_typed.take(field);
    if (field == EXPRESSION) {
        edit.text = Escaped(Xml_Clean(edit.text));
        if (Xml_Is_Blank(edit.text)) {
            return;
        }
        Forget_Expressions();
    }
    d_is_modified = true;
    Keep(edit);
}

void TMemory::Keep(const TEdit& edit)
{
    d_edits.erase(std::remove_if(
                      d_edits.begin(), d_edits.end(),
                      [&edit](const TEdit& known) { return known.field == edit.field && known.record == edit.record; }),
                  d_edits.end());
    if (!Is_Gone(edit)) {
        d_edits.append(edit);
    }
}

// Identifiers without an expression of their own use that of the item.
void TMemory::Forget_Expressions()
{
    const TShownRecord shown = Shown_Record(d_window);

    d_edits.erase(std::remove_if(d_edits.begin(), d_edits.end(),
                                 [&shown](const TEdit& known) {
                                     return known.field == EXPRESSION && known.record.component == shown.component &&
                                            known.record.item == shown.item;
                                 }),
                  d_edits.end());
}

// Renamed or removed. Which of several namesakes was edited is not known.
void TMemory::Forget_Gone_Records()
{
    d_edits.erase(std::remove_if(d_edits.begin(), d_edits.end(), [this](const TEdit& edit) { return Is_Gone(edit); }),
                  d_edits.end());
}

void TMemory::Forget_All()
{
    d_edits.clear();
    d_typed.clear();
    d_is_modified = false;
}

bool TMemory::Is_Gone(const TEdit& edit) const
{
    if (Is_Input(edit.field)) {
        return false;
    }
    const QTreeWidgetItem* component = nullptr;
    const QTreeWidgetItem* item = nullptr;
    if (Count(Child<QTreeWidget>(d_window, "budget_tree")->topLevelItem(0), edit.record.component, &component) != 1) {
        return true;
    }
    if (!edit.record.item.isEmpty() && Count(component, edit.record.item, &item) != 1) {
        return true;
    }
    // The list has the identifiers of the component that is shown; those of another can neither go nor come.
    const bool is_listed = Shown_Record(d_window).component == edit.record.component;
    return is_listed && !edit.record.identifier.isEmpty() &&
           Escaped_Texts(Child<QListWidget>(d_window, "identifier_list")).count(edit.record.identifier) != 1;
}

// Events

void TMemory::File_May_Be_Opened()
{
    d_may_leave_budget = true;
    d_may_open_file = true;
}

void TMemory::Loss_Confirmed()
{
    d_is_loss_confirmed = true;
}

void TMemory::Begin_Event()
{
    d_may_leave_budget = false;
    d_may_open_file = false;
    d_is_tree_rebuilt = false;
    d_is_loss_confirmed = false;
    d_files_before = d_files->Times();
    d_log_before = Log();
    d_was_saving_offered = Is_Saving_Offered();
}

QStringList TMemory::End_Event()
{
    if (d_window.isNull()) {
        return {};
    }
    if (!d_window->isVisible()) {
        const bool is_lost = d_is_modified && !d_is_loss_confirmed;
        Forget_All();
        return is_lost ? QStringList("closed without a question, with edits that no file has") : QStringList();
    }
    if (d_is_tree_rebuilt && (d_is_loss_confirmed || (d_may_leave_budget && !d_is_modified))) {
        Forget_All();
    }
    d_has_fine_numbers = d_has_fine_numbers && !(d_is_tree_rebuilt && d_may_open_file);
    Forget_Gone_Records();
    const bool is_saved = !Is_Saving_Offered() && (d_was_saving_offered || d_is_modified);
    return is_saved ? Look_At_Saved_File() : QStringList();
}

// Where saving is not offered, there is a file that has it all, or the log says why there is none.
QStringList TMemory::Look_At_Saved_File()
{
    const QHash<QString, qint64> times = d_files->Times();
    for (auto file = times.begin(); file != times.end(); ++file) {
        if (d_files_before.value(file.key()) != file.value()) {
            QString error;
            const TBudget saved = Loaded_Budget(file.key(), &error);
            return error.isEmpty() ? Missing_In(saved) : QStringList("the file that was saved: " + error);
        }
    }
    const QString log = Log();
    const bool goes_on = log.startsWith(d_log_before);
    const bool has_failed = log.mid(goes_on ? d_log_before.size() : 0).contains("ERR:");
    const bool is_lost = d_is_modified && !has_failed;
    d_is_modified = false;
    return is_lost ? QStringList("edits that no file has, and no saving") : QStringList();
}

QString TMemory::Log() const
{
    return d_window.isNull() ? QString() : Child<QPlainTextEdit>(d_window, "log")->toPlainText();
}

bool TMemory::Is_Saving_Offered() const
{
    return !d_window.isNull() && Child<QAction>(d_window, "action_save")->isEnabled();
}

QStringList TMemory::Missing_In(const TBudget& saved)
{
    QStringList missing;
    // Saving ends what is being edited, a name perhaps.
    Forget_Gone_Records();
    for (TEdit& edit : d_edits) {
        const QString held = Held_Text(saved, edit.record, edit.field);
        const bool is_held =
            Number_Fields::Decimals(edit.field) < 0
                ? held == edit.text
                : Number_Fields::Agree(edit.field, edit.text, Held_Number(saved, edit.record, edit.field));

        d_found += is_held && !edit.is_found ? 1 : 0;
        edit.is_found = edit.is_found || is_held;
        if (!is_held) {
            missing << QString("%1 of <%2> <%3> <%4>: entered <%5>, saved <%6>")
                           .arg(edit.field, edit.record.component, edit.record.item, edit.record.identifier,
                                edit.text.left(50), held.left(50));
        }
    }
    for (const TEdit& typed : qAsConst(d_typed)) {
        missing << QString("%1: typed <%2>, and saved without it").arg(typed.field, typed.text.left(50));
    }
    d_is_modified = false;
    return missing;
}
