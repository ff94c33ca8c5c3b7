#include "src/componentwidget.h"

#include "core/assertion.h"
#include "core/describe.h"
#include "core/entrydelegate.h"
#include "core/messagebox.h"
#include "core/numberedit.h"
#include "core/teardown.h"
#include "core/xmltext.h"
#include "src/calibrationdateedit.h"
#include "src/enablecontrol.h"
#include "src/iconbutton.h"
#include "src/namedialog.h"
#include "src/taborder.h"
#include "src/titlelabel.h"

#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

enum TRow
{
    ROW_TITLE,
    ROW_IDENTIFIERS,
    ROW_CALIBRATION_DATE,
    ROW_CALIBRATION_DUE_DATE,
    ROW_LENGTH,
    ROW_EXPANSION_COEFFICIENT,
    ROW_LINE,
    ROW_OPTIONS,
    ROW_MODE_SINGLE,
    ROW_MODE_SUM,
    ROW_MODE_EXPORT_EQUIPMENT,
    ROW_MODE_LIMIT_LENGTH
};

enum TColumn
{
    COLUMN_LABEL,
    COLUMN_EDITOR,
    COLUMN_UNIT,
    COLUMN_COUNT
};

const int LENGTH_DECIMALS = 5;
const int EXPANSION_COEFFICIENT_DECIMALS = 2;

// The text that heads every list of identifiers and stands for none of them.
const char* const DEFAULT_IDENTIFIER = "[Default]";

// Neither blank, which no file could carry, nor the name that no identifier may have: it could never be chosen.
bool Is_Usable_Name(const QString& name)
{
    return !Xml_Is_Blank(name) && name.compare(DEFAULT_IDENTIFIER, Qt::CaseInsensitive) != 0;
}

void Add_Label(QGridLayout* layout, int row, const QString& text, QWidget* buddy,
               Qt::Alignment alignment = Qt::AlignVCenter)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    layout->addWidget(label, row, COLUMN_LABEL, alignment);
}

template <typename TButton>
TButton* Add_Option(QGridLayout* layout, int row, const QString& object_name, const QString& text)
{
    auto* button = new TButton(text);
    button->setObjectName(object_name);
    layout->addWidget(button, row, COLUMN_LABEL, 1, COLUMN_COUNT);
    return button;
}

} // namespace

TComponentWidget::TComponentWidget(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QGridLayout(this);

    Create_Title(layout);
    Create_Identifier_List(layout);
    Create_Identifier_Buttons(layout);
    Create_Dates(layout);
    Create_Numbers(layout);
    Create_Options(layout);
    d_message_box = new TMessageBox(this);
    d_message_box->setWindowTitle(tr("Norvexa Editor"));

    Describe_Identifiers();
    Describe_Calibration();
    Describe_Options();
    Set_Tab_Order();
    Connect_Signals();
}

TComponentWidget::~TComponentWidget()
{
    Disconnect_Children(this);
}

QString TComponentWidget::Current_Identifier() const
{
    const QStringList names = Selected_Names();

    return names.size() == 1 ? names.first() : QString();
}

QString TComponentWidget::Calibration_Date() const
{
    return d_calibration_date->Date_Text();
}

QString TComponentWidget::Calibration_Due_Date() const
{
    return d_calibration_due_date->Date_Text();
}

bool TComponentWidget::Calibration_Date_Edited() const
{
    return d_calibration_date->Is_Edited();
}

bool TComponentWidget::Calibration_Due_Date_Edited() const
{
    return d_calibration_due_date->Is_Edited();
}

double TComponentWidget::Expansion_Coefficient() const
{
    return d_expansion_coefficient->Value();
}

QString TComponentWidget::Expansion_Coefficient_Text() const
{
    return d_expansion_coefficient->text();
}

double TComponentWidget::Length() const
{
    return d_length->Value();
}

QString TComponentWidget::Length_Text() const
{
    return d_length->text();
}

bool TComponentWidget::Mode_Single() const
{
    return d_mode_single->isChecked();
}

bool TComponentWidget::Mode_Sum() const
{
    return d_mode_sum->isChecked();
}

bool TComponentWidget::Mode_Export_Equipment() const
{
    return d_mode_export_equipment->isChecked();
}

bool TComponentWidget::Mode_Limit_Uncertainty_Length() const
{
    return d_mode_limit_length->isChecked();
}

void TComponentWidget::Set_Title(const QString& name)
{
    d_title->setText(name);
}

void TComponentWidget::Set_Identifiers(const QStringList& names)
{
    const QSignalBlocker blocker(d_identifier_list);

    d_identifier_list->clear();
    for (const QString& name : names) {
        Add_Entry(name);
    }
    d_identifiers = names;
    d_remove_identifier->setEnabled(false);
    Clear_Dates();
}

void TComponentWidget::Set_Dates(const QString& calibration, const QString& due)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_calibration_date->Show_Date(calibration);
    d_calibration_due_date->Show_Date(due);
}

void TComponentWidget::Clear_Dates()
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    for (TCalibrationDateEdit* edit : {d_calibration_date, d_calibration_due_date}) {
        // Qt would hand the focus of the disabled editor to the next part of its date, and so leave it here.
        edit->clearFocus();
        edit->setEnabled(false);
        edit->Clear_Edited();
    }
}

void TComponentWidget::Set_Expansion_Coefficient(double expansion_coefficient)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_expansion_coefficient->Set_Value(expansion_coefficient, EXPANSION_COEFFICIENT_DECIMALS);
}

void TComponentWidget::Set_Length(double length)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_length->Set_Value(length, LENGTH_DECIMALS);
}

void TComponentWidget::Set_Mode_Single()
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_mode_single->setChecked(true);
}

void TComponentWidget::Set_Mode_Sum()
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_mode_sum->setChecked(true);
}

void TComponentWidget::Set_Mode_Export_Equipment(bool on)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_mode_export_equipment->setChecked(on);
}

void TComponentWidget::Set_Mode_Limit_Uncertainty_Length(bool on)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_mode_limit_length->setChecked(on);
}

void TComponentWidget::Data_Changed()
{
    if (!d_suppress_signals) {
        emit Component_Changed();
    }
}

void TComponentWidget::Add_Identifier()
{
    TNameDialog dialog(this);
    dialog.Set_Title(tr("Add Identifier"));
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }

    const QString name = dialog.Name();
    if (Can_Add(name)) {
        Add_Entry(name);
        d_identifiers.append(name);
        emit Add_Component_Identifier(name);
    }
}

void TComponentWidget::Rename_Identifier(QWidget* /*editor*/)
{
    // An editor may commit once more while its entry is being taken out of the list.
    if (!d_identifier_delegate->Edited_Index().isValid()) {
        return;
    }

    const QString old_name = d_identifier_delegate->Edited_Name();
    const QString new_name = d_identifier_delegate->Entered_Name();
    const int index = d_identifiers.indexOf(old_name);
    NORVEXA_ASSERT(!(index < 0));

    if (Can_Rename(old_name, new_name)) {
        d_identifier_delegate->Accept_Rename();
        Rename_Entries(old_name, new_name);
        emit Rename_Component_Identifiers(old_name, new_name);
        emit Component_Identifier_Selected(new_name);
        // A key may have led to another entry by now.
        if (Current_Identifier() != new_name) {
            emit Component_Identifier_Selected(Current_Identifier());
        }
    } else {
        d_identifier_delegate->Refuse_Rename();
    }
}

void TComponentWidget::Remove_Identifiers()
{
    if (d_identifier_list->selectedItems().isEmpty() || !Removal_Is_Confirmed()) {
        return;
    }

    // Asking has ended an edit in place, so the names are final only now.
    const QStringList names = Selected_Names();
    {
        const QSignalBlocker blocker(d_identifier_list);
        qDeleteAll(d_identifier_list->selectedItems());
    }
    for (const QString& name : names) {
        d_identifiers.removeOne(name);
    }
    Identifier_Selected();
    emit Remove_Component_Identifiers(names);
}

void TComponentWidget::Identifier_Selected()
{
    const QStringList names = Selected_Names();

    Enable_Control(d_remove_identifier, !names.isEmpty(), d_identifier_list);
    if (names.size() == 1) {
        d_calibration_date->setEnabled(true);
        d_calibration_due_date->setEnabled(true);
        emit Component_Identifier_Selected(names.first());
    } else {
        Clear_Dates();
        emit Component_Identifier_Selected(QString());
    }
}

void TComponentWidget::Create_Title(QGridLayout* layout)
{
    d_title = new TTitleLabel(tr("Component"));
    d_title->setObjectName("component_title");
    layout->addWidget(d_title, ROW_TITLE, COLUMN_LABEL, 1, COLUMN_COUNT);
}

void TComponentWidget::Create_Identifier_List(QGridLayout* layout)
{
    d_identifier_list = new QListWidget;
    d_identifier_list->setObjectName("identifier_list");
    d_identifier_list->setAccessibleName(tr("Identifiers"));
    d_identifier_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    d_identifier_list->setSortingEnabled(true);
    d_identifier_delegate = new TEntryDelegate(d_identifier_list);

    Add_Label(layout, ROW_IDENTIFIERS, tr("Identifiers:"), d_identifier_list, Qt::AlignTop);
    layout->addWidget(d_identifier_list, ROW_IDENTIFIERS, COLUMN_EDITOR);
    layout->setRowStretch(ROW_IDENTIFIERS, 1);
    layout->setColumnStretch(COLUMN_EDITOR, 1);
}

void TComponentWidget::Create_Identifier_Buttons(QGridLayout* layout)
{
    d_add_identifier = Create_Icon_Button("add_identifier", ":/gui/add.png", tr("Add an identifier"), this);
    d_remove_identifier =
        Create_Icon_Button("remove_identifier", ":/gui/remove.png", tr("Remove the selected identifiers"), this);
    d_remove_identifier->setEnabled(false);

    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(4);
    buttons->addWidget(d_add_identifier);
    buttons->addWidget(d_remove_identifier);
    buttons->addStretch();
    layout->addLayout(buttons, ROW_IDENTIFIERS, COLUMN_UNIT);
}

void TComponentWidget::Create_Dates(QGridLayout* layout)
{
    d_calibration_date = new TCalibrationDateEdit;
    d_calibration_date->setObjectName("calibration_date");
    d_calibration_due_date = new TCalibrationDateEdit;
    d_calibration_due_date->setObjectName("calibration_due_date");

    Add_Label(layout, ROW_CALIBRATION_DATE, tr("Calibration Date:"), d_calibration_date);
    layout->addWidget(d_calibration_date, ROW_CALIBRATION_DATE, COLUMN_EDITOR);
    Add_Label(layout, ROW_CALIBRATION_DUE_DATE, tr("Calibration Due Date:"), d_calibration_due_date);
    layout->addWidget(d_calibration_due_date, ROW_CALIBRATION_DUE_DATE, COLUMN_EDITOR);

    Set_Dates(QString(), QString());
    Clear_Dates();
}

void TComponentWidget::Create_Numbers(QGridLayout* layout)
{
    d_length = Add_Number_Row(layout, ROW_LENGTH, tr("Length:"), tr("mm"));
    d_length->setObjectName("component_length");

    // The unit is written with the ring character U+02DA, not with the degree sign, and that is meant.
    d_expansion_coefficient =
        Add_Number_Row(layout, ROW_EXPANSION_COEFFICIENT, tr("Expansion Coefficient:"), tr("um/m/\u02DAC"));
    d_expansion_coefficient->setObjectName("component_expansion_coefficient");
}

void TComponentWidget::Create_Options(QGridLayout* layout)
{
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    layout->addWidget(line, ROW_LINE, COLUMN_LABEL, 1, COLUMN_COUNT);
    layout->addWidget(new QLabel(tr("Options:")), ROW_OPTIONS, COLUMN_LABEL, 1, COLUMN_COUNT);

    d_mode_single =
        Add_Option<QRadioButton>(layout, ROW_MODE_SINGLE, "mode_single", tr("Report as individual uncertainty items"));
    d_mode_sum =
        Add_Option<QRadioButton>(layout, ROW_MODE_SUM, "mode_sum", tr("Report as a combined uncertainty item"));
    d_mode_export_equipment =
        Add_Option<QCheckBox>(layout, ROW_MODE_EXPORT_EQUIPMENT, "mode_export_equipment", tr("Report component hint"));
    d_mode_limit_length = Add_Option<QCheckBox>(layout, ROW_MODE_LIMIT_LENGTH, "mode_limit_length",
                                                tr("Limit uncertainty to component length"));
    d_mode_sum->setChecked(true);
}

void TComponentWidget::Describe_Identifiers()
{
    Describe(d_identifier_list, tr("The physical instances of the component, such as serial numbers"),
             tr("The physical instances of the component, such as serial numbers. While exactly one is selected, the "
                "fields below and the expression of the item are those of this identifier; otherwise those of the "
                "component itself. F2 renames the selected entry. The buttons beside the list add an identifier and "
                "remove the selected ones."));
    d_add_identifier->setWhatsThis(
        tr("Asks for a name and adds an identifier to the component. A name that is in the list already is refused."));
    d_remove_identifier->setWhatsThis(tr("Removes the selected identifiers with their dates, lengths, expansion "
                                         "coefficients and expressions, after a question."));
}

void TComponentWidget::Describe_Calibration()
{
    Describe(
        d_calibration_date, tr("Date of the last calibration of the selected identifier"),
        tr("The date of the last calibration of the selected identifier. The arrow keys up and down change the part "
           "of the date in which the cursor stands."));
    Describe(d_calibration_due_date, tr("Date on which the next calibration of the selected identifier is due"),
             tr("The date on which the next calibration of the selected identifier is due. The arrow keys up and "
                "down change the part of the date in which the cursor stands."));
    Describe(d_length, tr("Length in mm of the component or of the selected identifier"),
             tr("The length, in mm, of the component or of the selected identifier. Expressions use it through the "
                "variable Lc, the number of times that a measured length goes beyond it; the option below limits "
                "length-dependent uncertainties to it."));
    Describe(
        d_expansion_coefficient,
        tr("Coefficient of linear thermal expansion in um/m/C of the component or of the selected identifier"),
        tr("The coefficient of linear thermal expansion, in um/m/C (micrometres per metre and degree Celsius), of "
           "the component or of the selected identifier. Expressions use it through the variables CTEc, in mm/m/C, "
           "and CTEd, its difference from that of the machine."));
}

void TComponentWidget::Describe_Options()
{
    Describe(
        d_mode_single, tr("Each item of the component can be reported on its own"),
        tr("Each item of the component can be chosen for a report group on its own, and stands in the report under "
           "the names of component and item."));
    Describe(
        d_mode_sum, tr("The items of the component are reported together"),
        tr("The component can be chosen for a report group as a whole: its standard uncertainty is the root sum of "
           "squares of its items."));
    Describe(d_mode_export_equipment, tr("Marks the component as one to hint at beside the report"),
             tr("Marks the component as one to hint at beside the report. The mark is kept in the file and changes "
                "no figure."));
    Describe(d_mode_limit_length, tr("Length-dependent items grow no further than the length of the component"),
             tr("Length-dependent items grow with the measured length no further than to the length, in mm, of the "
                "component or of its identifier."));
}

void TComponentWidget::Set_Tab_Order()
{
    const QList<QWidget*> order = {d_identifier_list,       d_add_identifier,       d_remove_identifier,
                                   d_calibration_date,      d_calibration_due_date, d_length,
                                   d_expansion_coefficient, d_mode_single,          d_mode_sum,
                                   d_mode_export_equipment, d_mode_limit_length};

    Set_Tab_Order_Of(order);
    Stop_At_The_Checked_One({d_mode_single, d_mode_sum});
}

void TComponentWidget::Connect_Signals()
{
    connect(d_identifier_list, &QListWidget::itemSelectionChanged, this, &TComponentWidget::Identifier_Selected);
    connect(d_identifier_delegate, &TEntryDelegate::commitData, this, &TComponentWidget::Rename_Identifier);
    connect(d_add_identifier, &QToolButton::clicked, this, &TComponentWidget::Add_Identifier);
    connect(d_remove_identifier, &QToolButton::clicked, this, &TComponentWidget::Remove_Identifiers);

    connect(d_calibration_date, &QDateEdit::dateChanged, this, &TComponentWidget::Data_Changed);
    connect(d_calibration_due_date, &QDateEdit::dateChanged, this, &TComponentWidget::Data_Changed);
    connect(d_length, &TNumberEdit::editingFinished, this, &TComponentWidget::Data_Changed);
    connect(d_expansion_coefficient, &TNumberEdit::editingFinished, this, &TComponentWidget::Data_Changed);

    connect(d_mode_single, &QRadioButton::toggled, this, &TComponentWidget::Data_Changed);
    connect(d_mode_sum, &QRadioButton::toggled, this, &TComponentWidget::Data_Changed);
    connect(d_mode_export_equipment, &QCheckBox::toggled, this, &TComponentWidget::Data_Changed);
    connect(d_mode_limit_length, &QCheckBox::toggled, this, &TComponentWidget::Data_Changed);
}

TNumberEdit* TComponentWidget::Add_Number_Row(QGridLayout* layout, int row, const QString& label, const QString& unit)
{
    auto* edit = new TNumberEdit;
    Add_Label(layout, row, label, edit);
    layout->addWidget(edit, row, COLUMN_EDITOR);
    layout->addWidget(new QLabel(unit), row, COLUMN_UNIT);

    // What is finished is no longer an open edit.
    connect(edit, &TNumberEdit::editingFinished, edit, [edit] { edit->setModified(false); });
    return edit;
}

void TComponentWidget::Add_Entry(const QString& name)
{
    auto* entry = new QListWidgetItem(name);
    entry->setFlags(entry->flags() | Qt::ItemIsEditable);
    d_identifier_list->addItem(entry);
}

QStringList TComponentWidget::Selected_Names() const
{
    QStringList names;
    for (int row = 0; row < d_identifier_list->count(); ++row) {
        const QListWidgetItem* entry = d_identifier_list->item(row);
        if (entry->isSelected()) {
            names.append(entry->text());
        }
    }
    return names;
}

bool TComponentWidget::Can_Add(const QString& name) const
{
    return Is_Usable_Name(name) && d_identifier_list->findItems(name, Qt::MatchFixedString).isEmpty();
}

bool TComponentWidget::Can_Rename(const QString& old_name, const QString& new_name) const
{
    // The renamed entry shows its new name already and is the one match that may be.
    return new_name != old_name && Is_Usable_Name(new_name) &&
           d_identifier_list->findItems(new_name, Qt::MatchFixedString).size() == 1;
}

void TComponentWidget::Rename_Entries(const QString& old_name, const QString& new_name)
{
    std::replace(d_identifiers.begin(), d_identifiers.end(), old_name, new_name);

    // A file may carry a name twice; the budget renames both.
    for (QListWidgetItem* entry : d_identifier_list->findItems(old_name, Qt::MatchExactly)) {
        entry->setText(new_name);
    }
}

bool TComponentWidget::Removal_Is_Confirmed()
{
    d_message_box->setText(tr("Delete Selected Component Identifiers"));
    d_message_box->setInformativeText(tr("Are you sure you want to delete the selected component identifier items?"));
    d_message_box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    d_message_box->setDefaultButton(QMessageBox::No);
    d_message_box->setIcon(QMessageBox::Question);
    return d_message_box->exec() == QMessageBox::Yes;
}
