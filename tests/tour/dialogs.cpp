#include "tests/tour/dialogs.h"

#include "tests/support/guiacts.h"
#include "tests/tour/screen.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

const int POLL_INTERVAL_MS = 50;

// Nothing may be thrown through the event loop of a dialog, and one that nobody answers would wait for ever.
void Act_Safely(QDialog* dialog, const Dialogs::TLook& act)
{
    try {
        act(dialog);
    } catch (const std::exception& error) {
        qFatal("%s", error.what());
    }
}

void When_Dialog_Is_Active(const Dialogs::TLook& act)
{
    QTimer::singleShot(POLL_INTERVAL_MS, qApp, [act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->isVisible() && Screen::Make_Active(dialog)) {
            Act_Safely(dialog, act);
        } else {
            When_Dialog_Is_Active(act);
        }
    });
}

void Look_At(QDialog* dialog, const Dialogs::TLook& look)
{
    if (look) {
        look(dialog);
    }
}

QPushButton* Accepting_Button(const QFileDialog* dialog)
{
    const auto* buttons = Child<QDialogButtonBox>(dialog, "buttonBox");

    return buttons->button(dialog->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                           : QDialogButtonBox::Open);
}

} // namespace

namespace Dialogs {

void Enter_Name(const QString& name, const TLook& look)
{
    When_Dialog_Is_Active([name, look](QDialog* dialog) {
        auto* edit = Child<QLineEdit>(dialog, "name_edit");
        Replace_Text(edit, name);
        Look_At(dialog, look);
        QTest::keyClick(edit, Qt::Key_Return);
    });
}

void Cancel_Name(const TLook& look)
{
    When_Dialog_Is_Active([look](QDialog* dialog) {
        Look_At(dialog, look);
        QTest::mouseClick(Child<QPushButton>(dialog, "cancel_button"), Qt::LeftButton);
    });
}

void Answer_Question(QDialogButtonBox::StandardButton button, const TLook& look)
{
    When_Dialog_Is_Active([button, look](QDialog* dialog) {
        Look_At(dialog, look);
        const auto* buttons = dialog->findChild<QDialogButtonBox*>();
        if (buttons == nullptr || buttons->button(button) == nullptr) {
            Fail_Missing("button of the question");
        }
        QTest::mouseClick(buttons->button(button), Qt::LeftButton);
    });
}

// The path is pasted: typed letter by letter, the dialog's completion would offer, and now and then take, other names.
void Choose_File(const QString& path)
{
    When_Dialog_Is_Active([path](QDialog* dialog) {
        auto* file_dialog = qobject_cast<QFileDialog*>(dialog);
        if (file_dialog == nullptr) {
            Fail_Missing("file dialog for " + path);
        }
        Paste_Text(Child<QLineEdit>(file_dialog, "fileNameEdit"), path);
        QTest::mouseClick(Accepting_Button(file_dialog), Qt::LeftButton);
        // A list of completions may have taken the click.
        if (file_dialog->isVisible()) {
            Choose_File(path);
        }
    });
}

} // namespace Dialogs
