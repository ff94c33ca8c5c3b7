#include "src/reportwidget.h"

#include "core/describe.h"
#include "core/number.h"
#include "src/combineduncertainty.h"
#include "src/reporttable.h"
#include "src/taborder.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QComboBox>
#include <QFont>
#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpacerItem>
#include <QTreeWidgetItem>

#include <algorithm>
#include <utility>

namespace {

enum TColumn
{
    COLUMN_DESCRIPTION,
    COLUMN_IDENTIFIER,
    COLUMN_TYPE,
    COLUMN_EXPRESSION,
    COLUMN_SENSITIVITY,
    COLUMN_DISTRIBUTION,
    COLUMN_VALUE,
    COLUMN_COUNT
};

constexpr int NO_GROUP = 0; ///< The position of "<no selection>".
constexpr int BOLD_WEIGHT = 75;
constexpr int LENGTH_DECIMALS = 3;
constexpr int UC_DECIMALS = 4;

/// A longer group name is shown whole in the opened list only, so that it does not widen the window.
constexpr int WIDEST_GROUP = 60;

const QColor ERROR_COLOUR(255, 0, 0, 255);

QString No_Group_Text()
{
    return QStringLiteral("<no selection>");
}

bool Is_Error(const TReportWidget::TReportItemData& item)
{
    return item.value_text == QLatin1String("ERR");
}

QStringList Item_Texts(const TReportWidget::TReportItemData& item)
{
    return {item.name,        QString(),         item.expression_type, item.expression,
            item.sensitivity, item.distribution, item.value_text};
}

/// An item's row chooses no identifier, so nothing in it can be edited.
QTreeWidgetItem* Create_Item_Row(const TReportWidget::TReportItemData& item)
{
    auto* row = new QTreeWidgetItem(Item_Texts(item));
    row->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    if (Is_Error(item)) {
        for (int column = 0; column < COLUMN_COUNT; ++column) {
            row->setForeground(column, QBrush(ERROR_COLOUR));
        }
    }
    return row;
}

/// Adds the values of the record's items; false at the first one that did not evaluate.
bool Add_Values(const TReportWidget::TReportData& record, TCombinedUncertainty* uncertainty)
{
    for (const TReportWidget::TReportItemData& item : record.items) {
        if (Is_Error(item)) {
            return false;
        }
        uncertainty->Add(item.expression_type, item.value);
    }
    return true;
}

/// The Uc of the group's own records in fixed notation, "ERR" if an item did not evaluate. Report data variables are
/// left out: they are part of the values of the items whose expressions use them.
QString Uc_Text(const std::vector<TReportWidget::TReportData>& records)
{
    TCombinedUncertainty uncertainty;
    for (const TReportWidget::TReportData& record : records) {
        if (!record.is_variable && !Add_Values(record, &uncertainty)) {
            return QStringLiteral("ERR");
        }
    }
    return QStringLiteral("%1 mm").arg(Fixed_Text(uncertainty.Uc(), UC_DECIMALS));
}

/// The width in which a drop-down list shows each of `texts` whole.
int Drop_Down_Width(const QStringList& texts, const QFont& font)
{
    QComboBox probe;
    probe.setFont(font);
    probe.addItems(texts);
    return probe.sizeHint().width();
}

/// Whether the focus is in `widget`, in one of its editors or in the opened list of one.
bool Has_Focus_Within(const QWidget* widget)
{
    for (const QWidget* child = QApplication::focusWidget(); child != nullptr; child = child->parentWidget()) {
        if (child == widget) {
            return true;
        }
    }
    return false;
}

QLabel* Create_Label(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QFrame* Create_Separator()
{
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

QPushButton* Create_Export_Button(const QString& text, const QString& object_name)
{
    auto* button = new QPushButton(text);
    button->setObjectName(object_name);
    button->setEnabled(false);
    return button;
}

} // namespace

// Layout

TReportWidget::TReportWidget(QWidget* parent) : QWidget(parent)
{
    Create_Group_Box();
    Create_Table();
    Create_Status();
    Create_Export_Buttons();
    Create_Layout();
    Describe_Controls();
    Connect_Signals();
}

void TReportWidget::Create_Group_Box()
{
    d_group_box = new QComboBox(this);
    d_group_box->setObjectName(QStringLiteral("report_group"));
    d_group_box->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    d_group_box->addItem(No_Group_Text());
}

void TReportWidget::Create_Table()
{
    d_table = new TReportTable(this);
    d_table->setObjectName(QStringLiteral("report_table"));
    d_table->setAccessibleName(QStringLiteral("Report Data"));
    d_table->setColumnCount(COLUMN_COUNT);
    d_table->setHeaderLabels({QStringLiteral("Description"), QStringLiteral("Identifier"), QStringLiteral("Type"),
                              QStringLiteral("Expression"), QStringLiteral("Sensitivity"),
                              QStringLiteral("Distribution Type"), QStringLiteral("Value")});
    // A last section that takes what is left of the width would cut the values when the window gets narrow.
    d_table->header()->setStretchLastSection(false);
    Fit_Columns();
}

void TReportWidget::Create_Status()
{
    d_status = new QLabel(this);
    d_status->setObjectName(QStringLiteral("report_status"));
    d_status->setTextFormat(Qt::PlainText);
}

void TReportWidget::Create_Export_Buttons()
{
    d_export_pdf = Create_Export_Button(QStringLiteral("Export PDF"), QStringLiteral("export_pdf"));
    d_export_csv = Create_Export_Button(QStringLiteral("Export CSV"), QStringLiteral("export_csv"));
}

void TReportWidget::Create_Layout()
{
    auto* layout = new QGridLayout(this);
    layout->addWidget(Create_Label(QStringLiteral("Report Group:"), d_group_box), 0, 0);
    layout->addWidget(d_group_box, 0, 1);
    layout->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 2);
    layout->addWidget(Create_Label(QStringLiteral("Report Data:"), d_table), 1, 0, Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(d_table, 1, 1, 1, 2);
    layout->addWidget(d_status, 2, 1, 1, 2);
    layout->addWidget(Create_Separator(), 3, 0, 1, 3);
    layout->addWidget(Create_Label(QStringLiteral("Output:"), d_export_pdf), 4, 0);
    layout->addLayout(Create_Output_Layout(), 4, 1, 1, 2);
    layout->addItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding), 5, 0, 1, 3);
    // The table takes the height that is left; the spacer below it none.
    layout->setRowStretch(1, 1);

    Set_Tab_Order_Of({d_group_box, d_table, d_export_pdf, d_export_csv});
}

QLayout* TReportWidget::Create_Output_Layout() const
{
    auto* layout = new QHBoxLayout;
    layout->addWidget(d_export_pdf);
    layout->addWidget(d_export_csv);
    layout->addStretch();
    return layout;
}

void TReportWidget::Describe_Controls()
{
    Describe(d_group_box, tr("The report group whose uncertainty is shown"),
             tr("The report group whose uncertainty is shown and exported. Choosing a group evaluates it at the end "
                "position of the variables page."));
    Describe(
        d_table, tr("The contributions to the uncertainty of the group"),
        tr("The components of the group in bold, each above its items. The value of an item is its standard "
           "uncertainty at the length below the table, in mm (in C for items of temperature), sensitivity "
           "coefficient and distribution taken into account; ERR means that its expression does not evaluate. In the "
           "column Identifier choose the physical instance of a component: go there with the arrow keys or click it, "
           "and the choices open in its place."));
    Describe(d_export_pdf, tr("Write the report as a PDF document"),
             tr("Evaluates the group at every length of the report range and writes the uncertainties, in mm, with "
                "the fitted formula at K=1 and K=2 to a PDF document."));
    Describe(d_export_csv, tr("Write the report as a CSV file"),
             tr("Evaluates the group at every length of the report range and writes the uncertainties, in mm, with "
                "the fitted formula at K=1 and K=2 to a CSV file for spreadsheets."));
}

void TReportWidget::Connect_Signals()
{
    connect(d_group_box, QOverload<int>::of(&QComboBox::activated), this, &TReportWidget::Generate_Report);
    connect(d_table, &TOptionEditorWidget::SelectionListItemChanged, this,
            &TReportWidget::Identifier_Selection_Changed);
    connect(d_export_pdf, &QPushButton::clicked, this, &TReportWidget::Generate_PDF);
    connect(d_export_csv, &QPushButton::clicked, this, &TReportWidget::Generate_CSV);
}

// Report groups

void TReportWidget::Update_Report_Groups(const QStringList& groups)
{
    const QString chosen = d_group_box->currentText();
    d_group_box->clear();
    d_group_box->addItem(No_Group_Text());
    d_group_box->addItems(groups);
    // findText finds exact texts only, told apart by case.
    d_group_box->setCurrentIndex(std::max(NO_GROUP, d_group_box->findText(chosen)));
    Make_Groups_Readable();
}

void TReportWidget::Set_Default_Report_Group()
{
    if (d_group_box->count() > 0) {
        d_group_box->setCurrentIndex(NO_GROUP);
    }
}

/// The box takes its size at the first show; longer names that come later need more.
void TReportWidget::Make_Groups_Readable()
{
    QStringList groups;
    for (int index = 0; index < d_group_box->count(); ++index) {
        groups << d_group_box->itemText(index);
    }
    const int width = Drop_Down_Width(groups, d_group_box->font());
    d_group_box->setMinimumWidth(std::min(width, WIDEST_GROUP * d_group_box->fontMetrics().averageCharWidth()));
}

// Report

void TReportWidget::Generate_Report()
{
    if (d_group_box->currentIndex() != NO_GROUP) {
        emit Create_Report(d_group_box->currentText());
    } else {
        Clear_Report();
    }
}

void TReportWidget::Refresh()
{
    Generate_Report();
}

void TReportWidget::Clear_Report()
{
    d_records.clear();
    d_table->clear();
    Enable_Exports(false);
}

void TReportWidget::Start_Report_Update()
{
    const bool was_blocked = d_table->blockSignals(true);
    // The state to return to is that before the first of several starts.
    if (!d_is_updating) {
        d_table_was_blocked = was_blocked;
    }
    d_is_updating = true;
    Enable_Exports(true);
}

void TReportWidget::End_Report_Update()
{
    Fit_Columns();
    Make_Identifiers_Readable();
    if (d_is_updating) {
        d_table->blockSignals(d_table_was_blocked);
    }
    d_is_updating = false;
}

void TReportWidget::Fit_Columns()
{
    for (int column = 0; column < COLUMN_COUNT; ++column) {
        d_table->resizeColumnToContents(column);
    }
}

/// The contents of the column are the chosen identifiers; the drop-down list in which to choose needs more.
void TReportWidget::Make_Identifiers_Readable()
{
    QStringList identifiers;
    for (const TReportData& record : d_records) {
        if (record.selection_index >= 0) {
            identifiers << record.identifiers;
        }
    }
    if (!identifiers.isEmpty()) {
        const int width = Drop_Down_Width(identifiers, d_table->font());
        d_table->setColumnWidth(COLUMN_IDENTIFIER, std::max(width, d_table->columnWidth(COLUMN_IDENTIFIER)));
    }
}

void TReportWidget::Add_Report_Data(const TReportData& record)
{
    TReportData copy = record;
    copy.selection_index = -1;
    if (!copy.items.empty()) {
        copy.selection_index = Add_Selection_Row(copy);
    }
    for (const TReportItemData& item : copy.items) {
        d_table->addTopLevelItem(Create_Item_Row(item));
        if (Is_Error(item)) {
            Enable_Exports(false);
        }
    }
    d_records.push_back(std::move(copy));
}

int TReportWidget::Add_Selection_Row(const TReportData& record)
{
    const int chosen = std::max(0, record.identifiers.indexOf(record.identifier));
    const int index = d_table->AddSelectionList(record.name, record.identifiers, chosen);
    QFont font = d_table->font();
    font.setWeight(BOLD_WEIGHT);
    d_table->topLevelItem(index)->setFont(COLUMN_DESCRIPTION, font);
    return index;
}

void TReportWidget::Update_Status_Display(const double& length)
{
    d_status->setText(
        QStringLiteral("Uc at length %1 mm: %2").arg(Fixed_Text(length, LENGTH_DECIMALS), Uc_Text(d_records)));
}

// Identifiers

QString TReportWidget::Current_Identifier(const QString& component) const
{
    const auto record = std::find_if(d_records.cbegin(), d_records.cend(),
                                     [&](const TReportData& candidate) { return candidate.name == component; });
    return record != d_records.cend() ? record->identifier : QString();
}

void TReportWidget::Identifier_Selection_Changed(int index, const QString& text)
{
    const auto record = std::find_if(d_records.cbegin(), d_records.cend(), [index](const TReportData& candidate) {
        return candidate.selection_index == index;
    });
    if (record == d_records.cend()) {
        Generate_Report();
        return;
    }
    // Copies: the report that follows replaces the records.
    const QString component = record->name;
    Choose_Identifier(component, text);
    const bool had_focus = Has_Focus_Within(d_table);
    Generate_Report();
    if (had_focus) {
        Return_To_Row(index, component);
    }
}

/// Other records of the component, such as its single items, are about the same artefact.
void TReportWidget::Choose_Identifier(const QString& component, const QString& identifier)
{
    for (TReportData& record : d_records) {
        if (record.name == component) {
            record.identifier = identifier;
        }
    }
}

/// Makes the row in which the user just chose an identifier current again, so that the keyboard goes on from there.
void TReportWidget::Return_To_Row(int index, const QString& component)
{
    QTreeWidgetItem* row = d_table->topLevelItem(index);
    if (row != nullptr && row->text(COLUMN_DESCRIPTION) == component) {
        d_table->setCurrentItem(row, COLUMN_IDENTIFIER);
    }
}

// Export

void TReportWidget::Generate_PDF()
{
    d_output_mode = OUTPUT_PDF;
    emit Create_Export_Report(d_group_box->currentText());
}

void TReportWidget::Generate_CSV()
{
    d_output_mode = OUTPUT_CSV;
    emit Create_Export_Report(d_group_box->currentText());
}

int TReportWidget::Output_Mode() const
{
    return d_output_mode;
}

void TReportWidget::Enable_Exports(bool enabled)
{
    d_export_pdf->setEnabled(enabled);
    d_export_csv->setEnabled(enabled);
}
