#pragma once

#include <QStringList>
#include <QWidget>

class QCheckBox;
class QGridLayout;
class QListWidget;
class QRadioButton;
class QToolButton;

class TCalibrationDateEdit;
class TEntryDelegate;
class TMessageBox;
class TNumberEdit;
class TTitleLabel;

/// The page of one budget component: its identifiers, the dates, length and expansion coefficient of the identifier
/// that is selected (of the component itself while none is), and how the component reports. The page only shows and
/// collects values: it keeps them as shown, and what it is filled with by its setters is never signalled as a change.
class TComponentWidget : public QWidget
{
    Q_OBJECT

public:
    explicit TComponentWidget(QWidget* parent = nullptr);
    ~TComponentWidget() override;

    /// The name of the one selected identifier; empty while none or several are selected.
    QString Current_Identifier() const;

    /// The date in the editor as "MMM d yyyy" with English names, whether the editor is enabled or not.
    QString Calibration_Date() const;
    QString Calibration_Due_Date() const;

    /// Whether the user has changed this date since it was last set or cleared. A date that was not edited may have
    /// been shown for a text that is no date, and must not replace that text.
    bool Calibration_Date_Edited() const;
    bool Calibration_Due_Date_Edited() const;

    /// In um/m/C as shown; 0 for a text that is no finite number.
    double Expansion_Coefficient() const;
    /// The text of the editor, to tell whether a number still stands there as it was set.
    QString Expansion_Coefficient_Text() const;

    /// In mm; 0 for a text that is no finite number.
    double Length() const;
    /// The text of the editor, to tell whether a number still stands there as it was set.
    QString Length_Text() const;

    /// Whether the component's items are reported one by one.
    bool Mode_Single() const;
    /// Whether the component's items are reported combined.
    bool Mode_Sum() const;
    bool Mode_Export_Equipment() const;
    bool Mode_Limit_Uncertainty_Length() const;

    /// The name of the component, shown as the title of the page.
    void Set_Title(const QString& name);

    /// Fills the list anew, with none selected: no dates, nothing to remove, and no signal.
    void Set_Identifiers(const QStringList& names);

    /// Shows dates of the form "MMM d yyyy" with English names; today for a text that is no such date. Whether they
    /// can be edited follows from the selected identifier.
    void Set_Dates(const QString& calibration, const QString& due);
    /// Disables the date editors, which show nothing then.
    void Clear_Dates();

    /// Takes um/m/C and shows two decimals.
    void Set_Expansion_Coefficient(double expansion_coefficient);
    /// Takes mm and shows five decimals.
    void Set_Length(double length);

    void Set_Mode_Single();
    void Set_Mode_Sum();
    void Set_Mode_Export_Equipment(bool on);
    void Set_Mode_Limit_Uncertainty_Length(bool on);

signals:
    void Component_Changed();
    void Add_Component_Identifier(const QString& name);
    void Rename_Component_Identifiers(const QString& old_name, const QString& new_name);
    void Remove_Component_Identifiers(const QStringList& names);
    /// An empty name stands for the component itself.
    void Component_Identifier_Selected(const QString& name);

public slots:
    void Data_Changed();
    void Add_Identifier();
    void Rename_Identifier(QWidget* editor);
    void Remove_Identifiers();
    void Identifier_Selected();

private:
    void Create_Title(QGridLayout* layout);
    void Create_Identifier_List(QGridLayout* layout);
    void Create_Identifier_Buttons(QGridLayout* layout);
    void Create_Dates(QGridLayout* layout);
    void Create_Numbers(QGridLayout* layout);
    void Create_Options(QGridLayout* layout);
    void Describe_Identifiers();
    void Describe_Calibration();
    void Describe_Options();
    void Set_Tab_Order();
    void Connect_Signals();

    TNumberEdit* Add_Number_Row(QGridLayout* layout, int row, const QString& label, const QString& unit);

    void Add_Entry(const QString& name);
    QStringList Selected_Names() const;
    bool Can_Add(const QString& name) const;
    bool Can_Rename(const QString& old_name, const QString& new_name) const;
    void Rename_Entries(const QString& old_name, const QString& new_name);
    bool Removal_Is_Confirmed();

    TTitleLabel* d_title = nullptr;
    QListWidget* d_identifier_list = nullptr;
    TEntryDelegate* d_identifier_delegate = nullptr;
    QToolButton* d_add_identifier = nullptr;
    QToolButton* d_remove_identifier = nullptr;
    TCalibrationDateEdit* d_calibration_date = nullptr;
    TCalibrationDateEdit* d_calibration_due_date = nullptr;
    TNumberEdit* d_length = nullptr;
    TNumberEdit* d_expansion_coefficient = nullptr;
    QRadioButton* d_mode_single = nullptr;
    QRadioButton* d_mode_sum = nullptr;
    QCheckBox* d_mode_export_equipment = nullptr;
    QCheckBox* d_mode_limit_length = nullptr;
    TMessageBox* d_message_box = nullptr;

    QStringList d_identifiers;
    bool d_suppress_signals = false;
};
