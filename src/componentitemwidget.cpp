#include "src/componentitemwidget.h"

#include "core/describe.h"
#include "core/numberedit.h"
#include "core/teardown.h"
#include "core/xmltext.h"
#include "src/expressionedit.h"
#include "src/taborder.h"
#include "src/titlelabel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

enum TRow
{
    ROW_TITLE,
    ROW_UC_TYPE,
    ROW_DISTRIBUTION,
    ROW_SENSITIVITY,
    ROW_EXPRESSION,
    ROW_UNIT,
    ROW_LINE,
    ROW_OPTIONS,
    ROW_USE_DEFAULT,
    ROW_LENGTH_PAIR,
    ROW_KIND_PAIR,
    ROW_STRETCH
};

enum TColumn
{
    COLUMN_LABEL,
    COLUMN_EDITOR,
    COLUMN_COUNT = 4
};

const int MINIMUM_WIDTH = 300; // pixels
const int PAIR_GAP = 6;        // pixels
const int SENSITIVITY_DECIMALS = 6;

// Long texts in a combo box must not widen the page.
QComboBox* Create_Type_List(const QString& object_name)
{
    auto* list = new QComboBox;
    list->setObjectName(object_name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(10);
    return list;
}

void Add_Row(QGridLayout* layout, int row, const QString& text, QWidget* editor)
{
    auto* label = new QLabel(text);
    label->setBuddy(editor);
    layout->addWidget(label, row, COLUMN_LABEL);
    layout->addWidget(editor, row, COLUMN_EDITOR, 1, COLUMN_COUNT - COLUMN_EDITOR);
}

QRadioButton* Create_Radio_Button(const QString& object_name, const QString& text)
{
    auto* button = new QRadioButton(text);
    button->setObjectName(object_name);
    return button;
}

// Of the two buttons exactly one is checked, at first `first`.
void Add_Pair(QGridLayout* layout, int row, QRadioButton* first, QRadioButton* second)
{
    auto* column = new QVBoxLayout;
    column->setContentsMargins(0, PAIR_GAP, 0, 0);
    column->addWidget(first);
    column->addWidget(second);
    layout->addLayout(column, row, COLUMN_LABEL, 1, COLUMN_COUNT);

    auto* pair = new QButtonGroup(first->parentWidget());
    pair->addButton(first);
    pair->addButton(second);
    first->setChecked(true);
}

void Refill(QComboBox* list, const QStringList& texts)
{
    list->clear();
    list->addItems(texts);
}

void Select_Text(QComboBox* list, const QString& text)
{
    const int index = list->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);

    if (!(index < 0)) {
        list->setCurrentIndex(index);
    }
}

QString Unit_Text(TComponentItemWidget::TRadioOptions options)
{
    switch (options) {
    case TComponentItemWidget::INDEPENDENT_LINEAR:
        return TComponentItemWidget::tr("Uc = f(expression) mm");
    case TComponentItemWidget::INDEPENDENT_TEMPERATURE:
        return TComponentItemWidget::tr("Uc = f(expression) C");
    case TComponentItemWidget::LENGTH_DEPENDENT_LINEAR:
        return TComponentItemWidget::tr("Uc = f(expression) mm/m");
    case TComponentItemWidget::LENGTH_DEPENDENT_TEMPERATURE:
        return TComponentItemWidget::tr("Uc = f(expression) C/m");
    }
    return QString();
}

} // namespace

TComponentItemWidget::TComponentItemWidget(QWidget* parent) : QWidget(parent)
{
    setMinimumWidth(MINIMUM_WIDTH);
    auto* layout = new QGridLayout(this);

    Create_Title(layout);
    Create_Editors(layout);
    Create_Options(layout);
    Create_Radio_Pairs(layout);
    layout->setRowStretch(ROW_STRETCH, 1);
    layout->setColumnStretch(COLUMN_EDITOR, 1);

    Describe_Editors();
    Describe_Options();
    Set_Tab_Order();
    Connect_Signals();
}

TComponentItemWidget::~TComponentItemWidget()
{
    Disconnect_Children(this);
}

QString TComponentItemWidget::UCType() const
{
    return d_uc_type->currentText();
}

QString TComponentItemWidget::Distribution_Type() const
{
    return d_distribution->currentText();
}

double TComponentItemWidget::Sensitivity() const
{
    return d_sensitivity->Value();
}

QString TComponentItemWidget::Sensitivity_Text() const
{
    return d_sensitivity->text();
}

QString TComponentItemWidget::Expression() const
{
    return d_expression->Expression();
}

bool TComponentItemWidget::Can_Edit_Expression() const
{
    return !d_expression->isReadOnly();
}

bool TComponentItemWidget::Use_Default_Expression() const
{
    return d_use_default_expression->isChecked();
}

TComponentItemWidget::TRadioOptions TComponentItemWidget::Radio_Options() const
{
    if (d_length_dependent->isChecked()) {
        return d_temperature->isChecked() ? LENGTH_DEPENDENT_TEMPERATURE : LENGTH_DEPENDENT_LINEAR;
    }
    return d_temperature->isChecked() ? INDEPENDENT_TEMPERATURE : INDEPENDENT_LINEAR;
}

void TComponentItemWidget::Reset_Distribution_Types(const QStringList& types)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    Refill(d_distribution, types);
}

void TComponentItemWidget::Reset_Uncertainty_Types(const QStringList& types)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    Refill(d_uc_type, types);
}

void TComponentItemWidget::Set_Idenfitier_Name(const QString& name)
{
    d_title->setText(tr("Identifier: %1").arg(name));
}

void TComponentItemWidget::Set_Radio_Options(TRadioOptions options)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);
    const bool is_length_dependent = options == LENGTH_DEPENDENT_LINEAR || options == LENGTH_DEPENDENT_TEMPERATURE;
    const bool is_temperature = options == INDEPENDENT_TEMPERATURE || options == LENGTH_DEPENDENT_TEMPERATURE;

    (is_length_dependent ? d_length_dependent : d_length_independent)->setChecked(true);
    (is_temperature ? d_temperature : d_linear)->setChecked(true);
    Show_Unit();
}

void TComponentItemWidget::Set_UCType(const QString& type)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    Select_Text(d_uc_type, type);
}

void TComponentItemWidget::Set_Distribution_Type(const QString& type)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    Select_Text(d_distribution, type);
}

void TComponentItemWidget::Set_Sensitivity(double sensitivity)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_sensitivity->Set_Value(sensitivity, SENSITIVITY_DECIMALS);
}

void TComponentItemWidget::Set_Expression(const QString& expression)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_expression->Show_Expression(expression);
    d_expression->setModified(false);
    d_last_expression = expression;
}

void TComponentItemWidget::Set_Expression_Hint(const TExpressionHint& hint)
{
    d_expression->Set_Hint(hint);
}

void TComponentItemWidget::Set_Option_Use_Default(bool on)
{
    const QScopedValueRollback<bool> suppress(d_suppress_signals, true);

    d_use_default_expression->setChecked(on);
}

void TComponentItemWidget::Enable_Option_Use_Default(bool enabled)
{
    d_use_default_expression->setEnabled(enabled);
}

void TComponentItemWidget::Use_Default_Toggled(bool on)
{
    d_expression->setEnabled(!on);
}

void TComponentItemWidget::Expression_Changed()
{
    if (!d_suppress_signals) {
        emit Component_Item_Changed();
    }
}

void TComponentItemWidget::Item_Modified()
{
    Show_Unit();
    if (!d_suppress_signals) {
        emit Component_Item_Changed();
    }
}

void TComponentItemWidget::Create_Title(QGridLayout* layout)
{
    d_title = new TTitleLabel(tr("[Default]"));
    d_title->setObjectName("item_title");
    layout->addWidget(d_title, ROW_TITLE, COLUMN_LABEL, 1, COLUMN_COUNT);
}

void TComponentItemWidget::Create_Editors(QGridLayout* layout)
{
    d_uc_type = Create_Type_List("uc_type");
    d_distribution = Create_Type_List("distribution");
    d_sensitivity = new TNumberEdit;
    d_sensitivity->setObjectName("sensitivity");
    d_expression = new TExpressionEdit;
    d_expression->setObjectName("expression");
    d_unit_label = new QLabel(tr("Uc = f(exp) mm"));
    d_unit_label->setObjectName("unit_label");

    Add_Row(layout, ROW_UC_TYPE, tr("UC Type:"), d_uc_type);
    Add_Row(layout, ROW_DISTRIBUTION, tr("Distribution:"), d_distribution);
    Add_Row(layout, ROW_SENSITIVITY, tr("Sensitivity:"), d_sensitivity);
    Add_Row(layout, ROW_EXPRESSION, tr("Expression:"), d_expression);
    layout->addWidget(d_unit_label, ROW_UNIT, COLUMN_EDITOR, 1, COLUMN_COUNT - COLUMN_EDITOR);
}

void TComponentItemWidget::Create_Options(QGridLayout* layout)
{
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    d_use_default_expression = new QCheckBox(tr("Use Default Expression"));
    d_use_default_expression->setObjectName("use_default_expression");

    layout->addWidget(line, ROW_LINE, COLUMN_LABEL, 1, COLUMN_COUNT);
    layout->addWidget(new TTitleLabel(tr("Options:")), ROW_OPTIONS, COLUMN_LABEL, 1, COLUMN_COUNT);
    layout->addWidget(d_use_default_expression, ROW_USE_DEFAULT, COLUMN_LABEL, 1, COLUMN_COUNT);
}

void TComponentItemWidget::Create_Radio_Pairs(QGridLayout* layout)
{
    d_length_independent = Create_Radio_Button("length_independent", tr("Expression result is independent of length"));
    d_length_dependent = Create_Radio_Button("length_dependent", tr("Expression result is length dependent"));
    d_linear = Create_Radio_Button("linear", tr("Expression describes a linear dimension"));
    d_temperature = Create_Radio_Button("temperature", tr("Expression describes temperature"));

    Add_Pair(layout, ROW_LENGTH_PAIR, d_length_independent, d_length_dependent);
    Add_Pair(layout, ROW_KIND_PAIR, d_linear, d_temperature);
}

void TComponentItemWidget::Describe_Editors()
{
    Describe(d_uc_type, tr("Type A or Type B evaluation of the standard uncertainty"),
             tr("How the standard uncertainty was evaluated: Type A, by the statistical analysis of observations, or "
                "Type B, by other means, such as a certificate or a data sheet."));
    Describe(
        d_distribution, tr("Probability distribution that turns the value into a standard uncertainty"),
        tr("The probability distribution of the contribution. The value of the expression is divided by 1 for "
           "Normal, \u221a3 for Rectangular, \u221a6 for Triangular, \u221a2 for U and \u221a12 for Step to give the "
           "standard uncertainty. For Normal enter a standard uncertainty: divide an expanded one by its coverage "
           "factor k."));
    Describe(
        d_sensitivity, tr("Sensitivity coefficient, by which the value of the expression is multiplied"),
        tr("The sensitivity coefficient: how much the result changes with the quantity that the expression is about. "
           "The standard uncertainty is multiplied by it. It is 1 where the expression gives the uncertainty of the "
           "result itself; otherwise its unit is that of the result per unit of the quantity."));
    Describe(
        d_expression, tr("The uncertainty of the item, in the unit below"),
        tr("The uncertainty of the item as a number or as an expression over the variables of the variables page, in "
           "the unit below the field: mm or C, per metre of measured length where the result is length dependent. "
           "While an identifier is selected, the expression is that of the identifier."));
}

void TComponentItemWidget::Describe_Options()
{
    Describe(d_use_default_expression, tr("The identifier uses the expression of the item"),
             tr("The selected identifier uses the expression of the item, which the field then shows. Clear the box to "
                "give the identifier an expression of its own."));
    Describe(d_length_independent, tr("The uncertainty is the same at every length"),
             tr("The expression gives an uncertainty that is the same at every measured length, in mm or C."));
    Describe(d_length_dependent, tr("The uncertainty grows with the measured length"),
             tr("The expression gives an uncertainty per metre of measured length, in mm/m or C/m; it is multiplied by "
                "the measured length in m."));
    Describe(
        d_linear, tr("The expression gives a length"),
        tr("The expression gives a length in mm, or in mm/m where it is length dependent. A report group cannot mix "
           "such items with items of temperature."));
    Describe(
        d_temperature, tr("The expression gives a temperature"),
        tr("The expression gives a temperature in C, or in C/m where it is length dependent. A report group cannot "
           "mix such items with items of length: bring the component into it through a variable."));
}

void TComponentItemWidget::Set_Tab_Order()
{
    const QList<QWidget*> order = {
        d_uc_type,          d_distribution, d_sensitivity, d_expression, d_use_default_expression, d_length_independent,
        d_length_dependent, d_linear,       d_temperature};

    Set_Tab_Order_Of(order);
    Stop_At_The_Checked_One({d_length_independent, d_length_dependent});
    Stop_At_The_Checked_One({d_linear, d_temperature});
}

void TComponentItemWidget::Connect_Signals()
{
    connect(d_use_default_expression, &QCheckBox::toggled, this, &TComponentItemWidget::Use_Default_Toggled);
    connect(d_use_default_expression, &QCheckBox::toggled, this, &TComponentItemWidget::Expression_Changed);

    for (QRadioButton* button : {d_length_independent, d_length_dependent, d_linear, d_temperature}) {
        connect(button, &QRadioButton::toggled, this, &TComponentItemWidget::Item_Modified);
    }
    for (QComboBox* list : {d_uc_type, d_distribution}) {
        connect(list, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TComponentItemWidget::Item_Modified);
    }

    connect(d_expression, &TExpressionEdit::textEdited, this, &TComponentItemWidget::Expression_Text_Changed);
    connect(d_expression, &TExpressionEdit::editingFinished, this, &TComponentItemWidget::Expression_Edited);
    connect(d_sensitivity, &TNumberEdit::editingFinished, this, &TComponentItemWidget::Sensitivity_Edited);
}

// What is finished is no longer an open edit, and an expression that no file could carry gives way to the one before.
void TComponentItemWidget::Expression_Edited()
{
    const QString expression = Xml_Clean(d_expression->Expression());

    if (Xml_Is_Blank(expression)) {
        Set_Expression(d_last_expression);
        emit Expression_Text_Changed();
        return;
    }
    // What stands as it was typed can still be undone.
    if (expression != d_expression->Expression()) {
        Set_Expression(expression);
    }
    d_expression->setModified(false);
    d_last_expression = expression;
    Expression_Changed();
}

void TComponentItemWidget::Sensitivity_Edited()
{
    d_sensitivity->setModified(false);
    Expression_Changed();
}

void TComponentItemWidget::Show_Unit()
{
    d_unit_label->setText(Unit_Text(Radio_Options()));
}
