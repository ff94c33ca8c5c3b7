#include "src/namedialog.h"

#include "core/describe.h"
#include "core/xmltext.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

QPushButton* Create_Button(const QString& text, const QString& object_name, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);

    button->setObjectName(object_name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

TNameDialog::TNameDialog(const QWidget* parent, Qt::WindowFlags flags) : QDialog(const_cast<QWidget*>(parent), flags)
{
    resize(315, 100);

    auto* grid = new QGridLayout(this);
    Create_Name_Row(grid);
    Create_Button_Row(grid);
    Describe_Controls();
}

void TNameDialog::Set_Title(const QString& title)
{
    setWindowTitle(title);
}

void TNameDialog::Set_Name(const QString& name)
{
    d_name_edit->setText(name);
    d_name_edit->selectAll();
}

QString TNameDialog::Name() const
{
    return Xml_Clean(d_name_edit->text()).trimmed();
}

void TNameDialog::Text_Changed(const QString& text)
{
    d_ok_button->setEnabled(!text.isEmpty());
}

void TNameDialog::Create_Name_Row(QGridLayout* grid)
{
    auto* label = new QLabel(tr("Name"), this);

    d_name_edit = new QLineEdit(this);
    d_name_edit->setObjectName("name_edit");
    label->setBuddy(d_name_edit);
    connect(d_name_edit, &QLineEdit::textChanged, this, &TNameDialog::Text_Changed);

    grid->addWidget(label, 0, 0);
    grid->addWidget(d_name_edit, 0, 1);
}

void TNameDialog::Create_Button_Row(QGridLayout* grid)
{
    auto* row = new QHBoxLayout;

    d_cancel_button = Create_Button(tr("Cancel"), "cancel_button", this);
    d_ok_button = Create_Button(tr("Ok"), "ok_button", this);
    d_ok_button->setDefault(true);
    d_ok_button->setEnabled(false);
    connect(d_ok_button, &QPushButton::clicked, this, &TNameDialog::accept);
    connect(d_cancel_button, &QPushButton::clicked, this, &TNameDialog::reject);

    row->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum));
    row->addWidget(d_cancel_button);
    row->addWidget(d_ok_button);
    grid->addLayout(row, 1, 0, 1, 2);
}

void TNameDialog::Describe_Controls()
{
    Describe(d_name_edit, tr("The name, with at least one character"),
             tr("The name, with at least one character. Blanks before and after it are left out. A name that is in "
                "use already is not taken."));
    Describe(d_ok_button, tr("Take the name"), tr("Takes the name. Return does the same."));
    Describe(d_cancel_button, tr("Close without a name"),
             tr("Closes the dialog and changes nothing. Escape does the same."));
}
