#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPointer>
#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

class QFileDialog;
class TNameDialog;

/// Answers the modal dialogs that a test expects, as a user would: with keyboard and mouse, on the dialog itself.
///
/// Arm it before the act. Answers are given in the order in which they were armed, each to a dialog of its kind; what
/// the dialogs showed can be asked afterwards:
///
///     TModalAnswer answer;
///     answer.Choose_File(path);                 // the file dialog ...
///     answer.Click(QMessageBox::Yes);           // ... and the question whether to overwrite
///     QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
///     EXPECT_EQ(answer.Seen(1).text, "File Exists");
///
/// The test fails, and never hangs, where
/// - a dialog opens that nobody expected, or one of another kind: it is rejected;
/// - a dialog does not close on its answer: it is rejected after a while;
/// - an answer is left over when the object goes: its dialog never opened.
///
/// The progress of an export comes up only where the machine takes its time. It is left alone, and goes by itself.
///
/// An object without answers is a watchdog: as long as it lives no dialog may open. Objects may be nested; the one made
/// last is in charge.
class TModalAnswer : public QObject
{
public:
    /// What a dialog showed when it was met. Fields that the dialog does not have stay empty.
    struct TSeen
    {
        QString title;

        // Name dialog: the name that stood in its field. Message box: the texts as its caller wrote them, without the
        // style around them. Markup and double blanks are as written.
        QString text;
        QString informative_text;

        // Message box only.
        QString raw_text;
        QString raw_informative_text;
        QString detailed_text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton default_button = QMessageBox::NoButton;
        QMessageBox::Icon icon = QMessageBox::NoIcon;

        // File dialog only.
        const QWidget* parent = nullptr;
        QString directory;
        QString file_name;
        QStringList name_filters;
        bool saves = false;
    };

    TModalAnswer();
    ~TModalAnswer() override;

    /// Name dialog: types `name` over what stands there, then presses Return, clicks "Ok" or clicks "Cancel".
    void Type_Name(const QString& name);
    void Type_Name_And_Click_Ok(const QString& name);
    void Type_Name_And_Cancel(const QString& name);

    /// Name dialog: clicks "Cancel" with the name as it is.
    void Cancel_Name();

    /// Name dialog: pastes `name`, which may hold characters that no key types, and presses Return.
    void Paste_Name(const QString& name);

    /// Message box: clicks that button.
    void Click(QMessageBox::StandardButton button);

    /// Message box: presses that key.
    void Press(Qt::Key key);

    /// Message box: closes it, as by the cross of its frame.
    void Close_Message();

    /// File dialog: types `path` (files and folders alike) and clicks the accepting button.
    void Choose_File(const QString& path);

    /// File dialog: clicks "Cancel".
    void Cancel_File();

    /// How many dialogs were answered, and what they showed, in their order.
    int Seen_Count() const;
    TSeen Seen(int index) const;

private:
    struct TAnswer
    {
        QString description;
        std::function<bool(QDialog*)> matches;
        std::function<TSeen(QDialog*)> look;
        std::function<void(QDialog*)> act;
    };

    void Expect_Name(const QString& description, const std::function<void(TNameDialog*)>& act);
    void Expect_Message(const QString& description, const std::function<void(QMessageBox*)>& act);
    void Expect_File(const QString& description, const std::function<void(QFileDialog*)>& act);

    void Schedule_Poll();
    void Poll();
    void Watch(QWidget* modal);
    void Meet(QDialog* dialog);
    void Give_Answer(QDialog* dialog);
    bool Is_Answered(const QWidget* modal) const;
    void Forget(const QWidget* modal);

    std::deque<TAnswer> d_answers;
    std::vector<TSeen> d_seen;

    // Dialogs that have their answer and are not closed yet: several where one has opened another.
    std::vector<QPointer<QWidget>> d_answered;

    // The modal widget on top, and since when it has been there or has had its answer.
    QPointer<QWidget> d_watched;
    QElapsedTimer d_watched_since;

    TModalAnswer* d_outer;
};
