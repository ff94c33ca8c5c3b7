#include "tests/support/guiacts.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QDateEdit>
#include <QTabBar>
#include <QTest>

#include <stdexcept>

namespace {

QModelIndex Find_Entry(const QAbstractItemModel* model, const QModelIndex& parent, const QString& text, int column)
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, column, parent);
        if (index.data().toString() == text) {
            return index;
        }
        const QModelIndex below = Find_Entry(model, model->index(row, 0, parent), text, column);
        if (below.isValid()) {
            return below;
        }
    }
    return {};
}

void Select_All(QLineEdit* field)
{
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
}

} // namespace

void Fail_Missing(const QString& what)
{
    throw std::runtime_error("Not found: " + what.toStdString());
}

void Show_Active(QWidget* window)
{
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) {
        Fail_Missing("active window " + window->windowTitle());
    }
}

void Type_Text(QWidget* widget, const QString& text)
{
    for (const uint code : text.toUcs4()) {
        const QString character = QString::fromUcs4(&code, 1);
        const auto key = code < 0x80 ? QTest::asciiToKey(static_cast<char>(code)) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Click, widget, key, character, Qt::NoModifier);
    }
}

void Replace_Text(QLineEdit* field, const QString& text)
{
    Select_All(field);
    QTest::keyClick(field, Qt::Key_Delete);
    Type_Text(field, text);
}

void Paste_Text(QLineEdit* field, const QString& text)
{
    Select_All(field);
    QApplication::clipboard()->setText(text);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
}

void Choose_Entry(QComboBox* combo, const QString& text)
{
    const int row = combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row < 0) {
        Fail_Missing("choice " + text);
    }
    // Opened by a key: a list that the mouse opened takes the next release of the button for the end of that click.
    QTest::keyClick(combo, Qt::Key_F4);
    QAbstractItemView* list = combo->view();
    if (!QTest::qWaitFor([list]() { return list->isVisible(); })) {
        Fail_Missing("opened list of choices");
    }
    Click_Entry(list, list->model()->index(row, combo->modelColumn(), list->rootIndex()));
    if (!QTest::qWaitFor([list]() { return !list->isVisible(); })) {
        Fail_Missing("closed list of choices");
    }
}

QCalendarWidget* Open_Calendar(QDateEdit* date)
{
    constexpr int ARROW_FROM_EDGE = 8;

    QTest::mouseClick(date, Qt::LeftButton, Qt::NoModifier,
                      QPoint(date->width() - ARROW_FROM_EDGE, date->height() / 2));
    if (!QTest::qWaitFor([date] { return date->calendarWidget()->isVisible(); })) {
        Fail_Missing("opened calendar");
    }
    return date->calendarWidget();
}

void Select_Tab(QTabWidget* tabs, const QString& text)
{
    for (int index = 0; index < tabs->count(); ++index) {
        if (tabs->tabText(index) == text) {
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier, tabs->tabBar()->tabRect(index).center());
            return;
        }
    }
    Fail_Missing("tab " + text);
}

QModelIndex Entry(const QAbstractItemView* view, const QString& text, int column)
{
    const QModelIndex index = Find_Entry(view->model(), view->rootIndex(), text, column);
    if (!index.isValid()) {
        Fail_Missing("entry " + text);
    }
    return index;
}

void Click_Entry(QAbstractItemView* view, const QModelIndex& index, Qt::KeyboardModifiers modifiers)
{
    view->scrollTo(index);
    const QRect seen = view->visualRect(index) & view->viewport()->rect();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, seen.center());
}

void Click_Entry(QAbstractItemView* view, const QString& text, Qt::KeyboardModifiers modifiers)
{
    Click_Entry(view, Entry(view, text), modifiers);
}

QLineEdit* Type_In_Entry(QAbstractItemView* view, const QString& entry, const QString& text)
{
    Click_Entry(view, entry);
    QTest::keyClick(view, Qt::Key_F2);

    auto* editor = Open_Editor(view);
    if (editor == nullptr) {
        Fail_Missing("editor of entry " + entry);
    }
    Replace_Text(editor, text);
    return editor;
}

void Rename_Entry(QAbstractItemView* view, const QString& entry, const QString& text)
{
    QTest::keyClick(Type_In_Entry(view, entry, text), Qt::Key_Return);
    if (!QTest::qWaitFor([view]() { return Open_Editor(view) == nullptr; })) {
        Fail_Missing("end of the editing of entry " + entry);
    }
}
