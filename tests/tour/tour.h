#pragma once

#include "tests/support/guiacts.h"

#include <QDir>
#include <QString>

/// A tour of the real window, driven by mouse and keyboard. What all tours share: the window, its pages and files, and
/// the pictures; a tour adds the road that it takes.
class TTour
{
public:
    explicit TTour(const QString& pictures);
    virtual ~TTour() = default;

    TTour(const TTour&) = delete;
    TTour& operator=(const TTour&) = delete;

    /// Shows a fresh window and follows the road. Whether every step did what a user expects of it; what did not is
    /// printed.
    bool Run();

protected:
    virtual void Follow() = 0;

    QWidget* Window() const;

    /// The widget of that object name in the window; never null.
    template <typename T>
    T* Find(const QString& object_name) const;

    void Click(const QString& button) const;
    void Click_Tool(const QString& action) const;

    /// Turns to a page by its shortcut, Alt with `key`.
    void Turn_To_Page(Qt::Key key);

    void Open_File(const QString& path);

    /// Chooses in the second column of the row `entry`, with the list of choices opened in place.
    void Choose_In_Row(const QString& list, const QString& entry, const QString& choice);

    void Choose_Group(const QString& group);

    /// Pictures are PNG files in the folder of the tour; `name` goes without the suffix.
    void Take_Picture(const QString& name);
    void Take_Picture_Of(const QWidget* widget, const QString& name);
    void Take_Picture_Of(const QWidget* widget, const QRect& part, const QString& name);

    void Expect(bool condition, const QString& what);
    void Expect_Text(const QString& shown, const QString& wanted, const QString& what);
    void Expect_Window_Active();

private:
    QDir d_pictures;
    QWidget* d_window = nullptr;
    bool d_succeeded = true;
};

template <typename T>
T* TTour::Find(const QString& object_name) const
{
    return Child<T>(d_window, object_name);
}
