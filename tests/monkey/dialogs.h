#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class QAbstractButton;
class QCalendarWidget;
class QDialog;
class QFileDialog;
class QMenu;
class QMessageBox;
class QWidget;
class TFiles;
class TMemory;
class TNameDialog;
class TRandom;

/// Answers every dialog, menu and opened list at random, as long as it lives: dialogs and menus that wait in an event
/// loop of their own as soon as they do, others when Deal_With_Popups is called.
class TDialogs : public QObject
{
public:
    /// Keeps all of them. The memory learns which losses are confirmed and that files are opened.
    TDialogs(TRandom* random, const TFiles* files, TMemory* memory);

    /// The file dialogs that open now get this path, questions are answered by Yes.
    void Choose_File(const QString& path);

    /// The end of Choose_File.
    void Choose_At_Random();

    void Deal_With_Popups();

private:
    void Schedule_Poll();
    void Poll();
    QWidget* Open_Widget() const;
    void Answer(QWidget* widget);
    void Answer_Once(QWidget* widget);
    void Answer_Name(TNameDialog* dialog);
    void Answer_Message(QMessageBox* box);
    void Press_Button(QMessageBox* box, QAbstractButton* button);
    void Answer_File(QFileDialog* dialog);
    void Answer_Menu(QMenu* menu);
    void Answer_Calendar(QCalendarWidget* calendar);
    void Answer_List(QWidget* popup);
    void End_By_Key(QWidget* widget, Qt::Key key);

    TRandom* d_random;
    const TFiles* d_files;
    TMemory* d_memory;
    QString d_chosen_path;
    std::vector<QPointer<QWidget>> d_in_hand;

    // How many event loops run where an answer is being given; what waits in a loop above that has none yet.
    int d_level = 0;
};
