#include "tests/support/modalanswer.h"

#include "src/exportprogress.h"
#include "src/namedialog.h"
#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const int POLL_INTERVAL_MS = 2;
// What the platform needs to make a new window the active one, if it does. Answered sooner, the dialog would become the
// active window after it has closed.
const int ACTIVATION_MS = 50;
const int PATIENCE_MS = 5000;

// The object made last, which alone meets dialogs.
TModalAnswer* s_current = nullptr;

// The text inside the style that TMessageBox puts around it; other texts as they are.
QString Caller_Text(const QString& raw)
{
    static const QRegularExpression STYLED("^<span style=\"[^\"]*\" >(.*)</span>$",
                                           QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = STYLED.match(raw);

    return match.hasMatch() ? match.captured(1) : raw;
}

QString Described(const QWidget* dialog)
{
    QString text = QString("%1 \"%2\"").arg(dialog->metaObject()->className(), dialog->windowTitle());

    if (const auto* message = qobject_cast<const QMessageBox*>(dialog)) {
        text += QString(" saying \"%1\" \"%2\"").arg(message->text(), message->informativeText());
    }
    return text;
}

// Makes a window the active one, as a window manager does; the offscreen platform misses it for a dialog that is shown
// again, and for the window behind one that closes.
void Activate(QWidget* window)
{
    if (window != nullptr && window->isVisible() && QApplication::activeWindow() != window) {
        QApplication::setActiveWindow(window);
    }
}

QWidget* Window_Behind(const QWidget* dialog)
{
    return dialog->parentWidget() != nullptr ? dialog->parentWidget()->window() : nullptr;
}

void Refuse(QWidget* modal, const QString& why)
{
    ADD_FAILURE() << why.toStdString() << ": " << Described(modal).toStdString();

    if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        dialog->reject();
    } else {
        modal->close();
    }
}

QLineEdit* Name_Edit(const TNameDialog* dialog)
{
    return Child<QLineEdit>(dialog, "name_edit");
}

QPushButton* File_Button(const QFileDialog* dialog, QDialogButtonBox::ButtonRole role)
{
    auto* box = Child<QDialogButtonBox>(dialog, "buttonBox");

    for (QAbstractButton* button : box->buttons()) {
        if (box->buttonRole(button) == role) {
            return qobject_cast<QPushButton*>(button);
        }
    }
    Fail_Missing("button of the file dialog");
}

QLineEdit* File_Name_Edit(const QFileDialog* dialog)
{
    return Child<QLineEdit>(dialog, "fileNameEdit");
}

void Type_Path(QFileDialog* dialog, const QString& path)
{
    QLineEdit* edit = File_Name_Edit(dialog);

    edit->setCompleter(nullptr); // its list would lie over the buttons
    Replace_Text(edit, path);
}

TModalAnswer::TSeen Look_At_Name(const TNameDialog* dialog)
{
    TModalAnswer::TSeen seen;

    seen.title = dialog->windowTitle();
    seen.text = Name_Edit(dialog)->text();
    return seen;
}

TModalAnswer::TSeen Look_At_Message(QMessageBox* box)
{
    TModalAnswer::TSeen seen;

    seen.title = box->windowTitle();
    seen.raw_text = box->text();
    seen.raw_informative_text = box->informativeText();
    seen.text = Caller_Text(seen.raw_text);
    seen.informative_text = Caller_Text(seen.raw_informative_text);
    seen.detailed_text = box->detailedText();
    seen.buttons = box->standardButtons();
    seen.default_button = box->standardButton(box->defaultButton());
    seen.icon = box->icon();
    return seen;
}

TModalAnswer::TSeen Look_At_File(const QFileDialog* dialog)
{
    TModalAnswer::TSeen seen;

    seen.title = dialog->windowTitle();
    seen.parent = dialog->parentWidget();
    seen.directory = dialog->directory().absolutePath();
    seen.file_name = File_Name_Edit(dialog)->text();
    seen.name_filters = dialog->nameFilters();
    seen.saves = dialog->acceptMode() == QFileDialog::AcceptSave;
    return seen;
}

} // namespace

TModalAnswer::TModalAnswer() : d_outer(s_current)
{
    s_current = this;
    Schedule_Poll();
}

TModalAnswer::~TModalAnswer()
{
    s_current = d_outer;
    for (const TAnswer& answer : d_answers) {
        ADD_FAILURE() << "No dialog opened for: " << answer.description.toStdString();
    }
}

void TModalAnswer::Type_Name(const QString& name)
{
    Expect_Name("type name " + name, [name](TNameDialog* dialog) {
        Replace_Text(Name_Edit(dialog), name);
        QTest::keyClick(Name_Edit(dialog), Qt::Key_Return);
    });
}

void TModalAnswer::Type_Name_And_Click_Ok(const QString& name)
{
    Expect_Name("type name and click Ok: " + name, [name](TNameDialog* dialog) {
        Replace_Text(Name_Edit(dialog), name);
        QTest::mouseClick(Child<QPushButton>(dialog, "ok_button"), Qt::LeftButton);
    });
}

void TModalAnswer::Type_Name_And_Cancel(const QString& name)
{
    Expect_Name("type name and click Cancel: " + name, [name](TNameDialog* dialog) {
        Replace_Text(Name_Edit(dialog), name);
        QTest::mouseClick(Child<QPushButton>(dialog, "cancel_button"), Qt::LeftButton);
    });
}

void TModalAnswer::Cancel_Name()
{
    Expect_Name("cancel the name", [](TNameDialog* dialog) {
        QTest::mouseClick(Child<QPushButton>(dialog, "cancel_button"), Qt::LeftButton);
    });
}

void TModalAnswer::Paste_Name(const QString& name)
{
    Expect_Name("paste name " + name, [name](TNameDialog* dialog) {
        Paste_Text(Name_Edit(dialog), name);
        QTest::keyClick(Name_Edit(dialog), Qt::Key_Return);
    });
}

void TModalAnswer::Click(QMessageBox::StandardButton button)
{
    Expect_Message(QString("click button 0x%1").arg(int(button), 0, 16), [button](QMessageBox* box) {
        QAbstractButton* widget = box->button(button);
        if (widget == nullptr) {
            Fail_Missing(QString("button 0x%1").arg(int(button), 0, 16));
        }
        QTest::mouseClick(widget, Qt::LeftButton);
    });
}

void TModalAnswer::Press(Qt::Key key)
{
    Expect_Message(QString("press key 0x%1").arg(int(key), 0, 16),
                   [key](QMessageBox* box) { QTest::keyClick(box, key); });
}

void TModalAnswer::Close_Message()
{
    Expect_Message("close", [](QMessageBox* box) { box->close(); });
}

void TModalAnswer::Choose_File(const QString& path)
{
    Expect_File("choose file " + path, [path](QFileDialog* dialog) {
        Type_Path(dialog, path);
        QTest::mouseClick(File_Button(dialog, QDialogButtonBox::AcceptRole), Qt::LeftButton);
    });
}

void TModalAnswer::Cancel_File()
{
    Expect_File("cancel the file", [](QFileDialog* dialog) {
        QTest::mouseClick(File_Button(dialog, QDialogButtonBox::RejectRole), Qt::LeftButton);
    });
}

int TModalAnswer::Seen_Count() const
{
    return static_cast<int>(d_seen.size());
}

TModalAnswer::TSeen TModalAnswer::Seen(int index) const
{
    if (index < 0 || index >= Seen_Count()) {
        Fail_Missing(QString("dialog number %1").arg(index));
    }
    return d_seen.at(static_cast<std::size_t>(index));
}

void TModalAnswer::Expect_Name(const QString& description, const std::function<void(TNameDialog*)>& act)
{
    d_answers.push_back({description, [](QDialog* dialog) { return qobject_cast<TNameDialog*>(dialog) != nullptr; },
                         [](QDialog* dialog) { return Look_At_Name(qobject_cast<TNameDialog*>(dialog)); },
                         [act](QDialog* dialog) { act(qobject_cast<TNameDialog*>(dialog)); }});
}

void TModalAnswer::Expect_Message(const QString& description, const std::function<void(QMessageBox*)>& act)
{
    d_answers.push_back({description, [](QDialog* dialog) { return qobject_cast<QMessageBox*>(dialog) != nullptr; },
                         [](QDialog* dialog) { return Look_At_Message(qobject_cast<QMessageBox*>(dialog)); },
                         [act](QDialog* dialog) { act(qobject_cast<QMessageBox*>(dialog)); }});
}

void TModalAnswer::Expect_File(const QString& description, const std::function<void(QFileDialog*)>& act)
{
    d_answers.push_back({description, [](QDialog* dialog) { return qobject_cast<QFileDialog*>(dialog) != nullptr; },
                         [](QDialog* dialog) { return Look_At_File(qobject_cast<QFileDialog*>(dialog)); },
                         [act](QDialog* dialog) { act(qobject_cast<QFileDialog*>(dialog)); }});
}

void TModalAnswer::Schedule_Poll()
{
    // A new single shot each time: a repeating timer stays silent in the event loop of a dialog that its own slot
    // opened, as the question of a file dialog whether to overwrite.
    QTimer::singleShot(POLL_INTERVAL_MS, this, &TModalAnswer::Poll);
}

void TModalAnswer::Poll()
{
    Schedule_Poll();

    QWidget* modal = QApplication::activeModalWidget();
    if (s_current != this || modal == nullptr || !modal->isVisible() || qobject_cast<TExportProgress*>(modal)) {
        return;
    }
    Watch(modal);

    auto* dialog = qobject_cast<QDialog*>(modal);
    const bool is_answered = Is_Answered(modal);
    const bool is_expected = dialog != nullptr && !d_answers.empty() && d_answers.front().matches(dialog);

    if (!is_answered && !is_expected) {
        Refuse(modal, d_answers.empty() ? "Nobody expected" : "Expected to " + d_answers.front().description);
    } else if (!is_answered) {
        if (QApplication::activeWindow() == dialog || d_watched_since.hasExpired(ACTIVATION_MS)) {
            Meet(dialog);
        }
    } else if (d_watched_since.hasExpired(PATIENCE_MS)) {
        Refuse(modal, "Not closed by its answer");
    }
}

void TModalAnswer::Watch(QWidget* modal)
{
    if (d_watched != modal) {
        d_watched = modal;
        d_watched_since.start();
    }
}

void TModalAnswer::Meet(QDialog* dialog)
{
    const QPointer<QDialog> guard(dialog);
    const int index = Seen_Count();

    d_answered.emplace_back(dialog);
    Activate(dialog);
    connect(dialog, &QDialog::finished, this, [this, dialog]() {
        Forget(dialog);
        Activate(Window_Behind(dialog));
    });
    try {
        Give_Answer(dialog);
    } catch (const std::exception& error) { // must not pass through Qt's event loop
        Refuse(dialog, error.what());
    }
    // Where the answer led to a question and that one's answer leads back here, the dialog may have another answer.
    if (guard != nullptr && Seen_Count() > index + 1) {
        Forget(dialog);
    }
}

void TModalAnswer::Give_Answer(QDialog* dialog)
{
    const TAnswer answer = d_answers.front();

    d_answers.pop_front();
    d_seen.push_back(answer.look(dialog));
    d_watched_since.start();
    answer.act(dialog);
}

bool TModalAnswer::Is_Answered(const QWidget* modal) const
{
    return std::any_of(d_answered.begin(), d_answered.end(), [modal](const auto& widget) { return widget == modal; });
}

void TModalAnswer::Forget(const QWidget* modal)
{
    const auto is_gone = [modal](const auto& widget) { return widget == nullptr || widget == modal; };

    d_answered.erase(std::remove_if(d_answered.begin(), d_answered.end(), is_gone), d_answered.end());
    d_watched = nullptr;
}
