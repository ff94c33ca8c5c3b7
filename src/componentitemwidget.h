#pragma once

#include <QStringList>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QRadioButton;

class TExpressionEdit;
class TNumberEdit;
class TTitleLabel;
struct TExpressionHint;

/// The page of one component item: its types, its sensitivity and, for the identifier named in the title, its
/// expression. The page only shows and collects values; what it is filled with by its setters is never signalled as a
/// change.
class TComponentItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// What the result of the expression describes, as the two pairs of radio buttons say it.
    enum TRadioOptions
    {
        INDEPENDENT_LINEAR = 0,
        INDEPENDENT_TEMPERATURE = 1,
        LENGTH_DEPENDENT_LINEAR = 2,
        LENGTH_DEPENDENT_TEMPERATURE = 3
    };

    explicit TComponentItemWidget(QWidget* parent = nullptr);
    ~TComponentItemWidget() override;

    QString UCType() const;
    QString Distribution_Type() const;

    /// 0 for a text that is no finite number.
    double Sensitivity() const;
    /// The text of the editor, to tell whether a number still stands there as it was set.
    QString Sensitivity_Text() const;

    QString Expression() const;
    bool Use_Default_Expression() const;

    /// Whether the editor has room for the whole expression.
    bool Can_Edit_Expression() const;

    TRadioOptions Radio_Options() const;

    void Reset_Distribution_Types(const QStringList& types);
    void Reset_Uncertainty_Types(const QStringList& types);

    /// Shows the identifier in the title. The name's odd spelling is meant.
    void Set_Idenfitier_Name(const QString& name);

    void Set_Radio_Options(TRadioOptions options);

    /// Select the entry of exactly this text; without one the selection stays.
    void Set_UCType(const QString& type);
    void Set_Distribution_Type(const QString& type);

    /// Shows six decimals.
    void Set_Sensitivity(double sensitivity);

    /// This is also the expression that comes back when the user leaves the editor empty.
    void Set_Expression(const QString& expression);

    /// Shows what is known about the expression as it stands. A hint and no edit: nothing else changes.
    void Set_Expression_Hint(const TExpressionHint& hint);

    /// Ticks or clears "Use Default Expression"; the expression can be edited while it is clear.
    void Set_Option_Use_Default(bool on);
    /// Whether the user may tick or clear it.
    void Enable_Option_Use_Default(bool enabled);

signals:
    void Component_Item_Changed();

    /// The user changes the text of the expression, which is no change of the item yet: a new hint is due.
    void Expression_Text_Changed();

public slots:
    void Use_Default_Toggled(bool on);
    void Expression_Changed();
    void Item_Modified();

private:
    void Create_Title(QGridLayout* layout);
    void Create_Editors(QGridLayout* layout);
    void Create_Options(QGridLayout* layout);
    void Create_Radio_Pairs(QGridLayout* layout);
    void Describe_Editors();
    void Describe_Options();
    void Set_Tab_Order();
    void Connect_Signals();

    void Expression_Edited();
    void Sensitivity_Edited();
    void Show_Unit();

    TTitleLabel* d_title = nullptr;
    QComboBox* d_uc_type = nullptr;
    QComboBox* d_distribution = nullptr;
    TNumberEdit* d_sensitivity = nullptr;
    TExpressionEdit* d_expression = nullptr;
    QLabel* d_unit_label = nullptr;
    QCheckBox* d_use_default_expression = nullptr;
    QRadioButton* d_length_independent = nullptr;
    QRadioButton* d_length_dependent = nullptr;
    QRadioButton* d_linear = nullptr;
    QRadioButton* d_temperature = nullptr;

    QString d_last_expression;
    bool d_suppress_signals = false;
};
