#pragma once

#include <QStringList>

class QAbstractItemView;
class QLineEdit;
class QMainWindow;
class QModelIndex;
class QPoint;
class QWidget;
class TFiles;
class TMemory;
class TRandom;

/// The acts of the monkey on a window: each is one that a user can do, at a place and with texts that chance chooses.
class TActs
{
public:
    /// Keeps all of them.
    TActs(QMainWindow* window, TRandom* random, const TFiles* files, TMemory* memory);

    /// Does one act. It may leave a menu or a list open.
    void Do_One();

    // Acts that are also needed by themselves

    /// Drops a file on the middle of the window.
    void Drop(const QString& path);

    /// Scrolls to an entry of a view and clicks it.
    void Select(QAbstractItemView* view, const QModelIndex& entry, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

private:
    struct TAct
    {
        int weight;
        bool (TActs::*act)();
    };

    // Each tells whether it could be done.
    bool Click();
    bool Double_Click();
    bool Open_Context_Menu();
    bool Press_Key();
    bool Press_Shortcut();
    bool Turn_Page();
    bool Drag();
    bool Fill_Field();
    bool Type();
    bool Paste();
    bool Rename();
    bool Add();
    bool Replace_Expression();
    bool Gather();
    bool Choose_Group();
    bool Drop_Files();
    bool Close();

    QWidget* Random_Widget() const;
    QPoint Random_Place(QWidget* widget) const;
    void Fill(QLineEdit* field);
    void End_Entering();
    void Press_Save();
    QString Fitting_Text(const QWidget* field) const;
    QString Fitting_Number(const QWidget* field) const;
    void Drop(const QStringList& paths, QWidget* target);

    QMainWindow* d_window;
    TRandom* d_random;
    const TFiles* d_files;
    TMemory* d_memory;
};
