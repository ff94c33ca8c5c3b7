#include "tests/monkey/userinput.h"

#include "tests/support/guiacts.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMainWindow>
#include <QPointer>
#include <QTest>
#include <QTreeView>
#include <QWindow>

#include <algorithm>

namespace {

// QTest's clock goes on by 2 ms between the presses of a double click.
const int DOUBLE_CLICK_MS = 3;
const int SETTLING_MS = DOUBLE_CLICK_MS + 1;

// Letters typed within that time go into one search.
const int SEARCH_MS = 0;
const int BETWEEN_SEARCHES_MS = 2;

const int LONGEST_TYPED = 100;

// A drag that leaves the widget would wait for a real mouse.
const int NEVER_REACHED = 1000000;

QPoint In_Window(const QWidget* widget, const QPoint& position)
{
    return widget->mapTo(widget->window(), position);
}

QWidget* Focus_Widget(QWidget* fallback)
{
    QWidget* focused = QApplication::focusWidget();

    return focused == nullptr ? fallback : focused;
}

bool Has_Keys(const QString& text)
{
    const auto has_key = [](QChar character) { return character.unicode() >= 0x20 && !character.isSurrogate(); };

    return text.size() <= LONGEST_TYPED && std::all_of(text.begin(), text.end(), has_key);
}

bool Searches_By_Letters(QWidget* widget)
{
    return qobject_cast<QAbstractItemView*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr;
}

} // namespace

void User_Input::Make_Timeless()
{
    QApplication::setDoubleClickInterval(DOUBLE_CLICK_MS);
    QApplication::setKeyboardInputInterval(SEARCH_MS);
    QApplication::setStartDragDistance(NEVER_REACHED);
    QApplication::setCursorFlashTime(0);
    for (const Qt::UIEffect effect :
         {Qt::UI_AnimateMenu, Qt::UI_AnimateCombo, Qt::UI_AnimateTooltip, Qt::UI_FadeMenu}) {
        QApplication::setEffectEnabled(effect, false);
    }
}

void User_Input::Make_Timeless(QWidget* window)
{
    for (QTreeView* view : window->findChildren<QTreeView*>()) {
        view->setAnimated(false);
    }
    if (auto* main_window = qobject_cast<QMainWindow*>(window)) {
        main_window->setAnimated(false);
    }
}

void User_Input::Activate(QWidget* window)
{
    if (window->isVisible() && QApplication::activeWindow() != window) {
        QApplication::setActiveWindow(window);
    }
}

void User_Input::Settle()
{
    QTest::qWait(SETTLING_MS);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void User_Input::Click(QWidget* widget, const QPoint& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(widget->window()->windowHandle(), button, modifiers, In_Window(widget, position));
}

void User_Input::Double_Click(QWidget* widget, const QPoint& position)
{
    QTest::mouseDClick(widget->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, In_Window(widget, position));
}

void User_Input::Drag(QWidget* from, const QPoint& start, QWidget* to, const QPoint& end)
{
    QWindow* window = from->window()->windowHandle();
    const QPoint first = In_Window(from, start);
    const QPoint last = In_Window(to, end);

    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, first);
    // A list that the press has opened takes the release for the end of that click, for a moment.
    Settle();
    QTest::mouseMove(window, (first + last) / 2);
    QTest::mouseMove(window, last);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, last);
}

void User_Input::Press(QWidget* fallback, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    Press_In(Focus_Widget(fallback), key, modifiers);
}

void User_Input::Press_In(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (Searches_By_Letters(widget)) {
        QTest::qSleep(BETWEEN_SEARCHES_MS);
    }
    const QPointer<QWidget> guard(widget);
    QTest::keyPress(widget, key, modifiers);
    // The press may have closed the editor in which it happened.
    if (!guard.isNull()) {
        QTest::keyRelease(widget, key, modifiers);
    }
}

void User_Input::Type(QWidget* fallback, const QString& text)
{
    if (!Has_Keys(text)) {
        Paste(fallback, text);
        return;
    }
    for (const uint code : text.toUcs4()) {
        Type_Text(Focus_Widget(fallback), QString::fromUcs4(&code, 1));
    }
}

void User_Input::Paste(QWidget* fallback, const QString& text)
{
    QApplication::clipboard()->setText(text);
    Press(fallback, Qt::Key_V, Qt::ControlModifier);
}
