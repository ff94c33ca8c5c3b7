#pragma once

#include <QDialog>

class QGridLayout;
class QLineEdit;
class QPushButton;

/// Asks for one name. An empty entry cannot be accepted, but one of blanks only can: Name() is empty then, and callers
/// treat that as a cancelled dialog.
///
///     TNameDialog dialog(this);
///     dialog.Set_Title(tr("New Variable"));
///     if (dialog.exec() == QDialog::Accepted && !dialog.Name().isEmpty()) ...
class TNameDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TNameDialog(const QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    void Set_Title(const QString& title);

    /// Puts `name` into the line edit, all selected, so that typing replaces it.
    void Set_Name(const QString& name);

    /// What was entered, without white space at its ends and without characters that no file can carry.
    QString Name() const;

public slots:
    /// Enables "Ok" exactly when `text` is not empty; blanks count as a text here.
    void Text_Changed(const QString& text);

private:
    void Create_Name_Row(QGridLayout* grid);
    void Create_Button_Row(QGridLayout* grid);
    void Describe_Controls();

    QLineEdit* d_name_edit = nullptr;
    QPushButton* d_cancel_button = nullptr;
    QPushButton* d_ok_button = nullptr;
};
