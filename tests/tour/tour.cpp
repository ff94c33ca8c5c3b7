#include "tests/tour/tour.h"

#include "src/norvexaeditor.h"
#include "tests/tour/dialogs.h"
#include "tests/tour/screen.h"

#include <QAbstractButton>
#include <QAction>
#include <QTest>
#include <QTextStream>
#include <QToolBar>
#include <QTreeWidget>

TTour::TTour(const QString& pictures) : d_pictures(pictures) {}

bool TTour::Run()
{
    TNorvexaEditor window;
    d_window = &window;
    window.show();
    Expect_Window_Active();
    try {
        Follow();
    } catch (const std::exception& error) {
        Expect(false, error.what());
    }
    d_window = nullptr;
    return d_succeeded;
}

QWidget* TTour::Window() const
{
    return d_window;
}

// Acts

void TTour::Click(const QString& button) const
{
    // At its left end, where check boxes and radio buttons have their mark however wide the page is.
    auto* widget = Find<QAbstractButton>(button);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, widget->height() / 2));
}

void TTour::Click_Tool(const QString& action) const
{
    QTest::mouseClick(Find<QToolBar>("tool_bar")->widgetForAction(Find<QAction>(action)), Qt::LeftButton);
}

void TTour::Turn_To_Page(Qt::Key key)
{
    Expect_Window_Active();
    QTest::keyClick(d_window, key, Qt::AltModifier);
    for (const char* page : {"components", "variables", "groups", "report", "log"}) {
        const bool is_wanted = QChar(page[0]).toUpper() == QChar(key);
        Expect(Find<QAction>(QString("action_") + page)->isChecked() == is_wanted,
               QString("Alt+%1 turns to its page alone: %2").arg(QChar(key)).arg(page));
    }
}

void TTour::Open_File(const QString& path)
{
    Dialogs::Choose_File(path);
    Click_Tool("action_open");
    Expect_Window_Active();
}

void TTour::Choose_In_Row(const QString& list, const QString& entry, const QString& choice)
{
    auto* view = Find<QTreeWidget>(list);
    const QModelIndex row = Entry(view, entry);
    Click_Entry(view, row.sibling(row.row(), 1));

    auto* combo = Open_Editor<QComboBox>(view);
    if (combo == nullptr) {
        Fail_Missing("choices of " + entry);
    }
    QAbstractItemView* choices = combo->view();
    QTest::keyClick(combo, Qt::Key_F4);
    Expect(QTest::qWaitFor([choices] { return choices->isVisible(); }), "the list of choices opens: " + entry);
    // The list may be narrower than its entries. What follows from the choice may take it away.
    const QRect seen = choices->visualRect(Entry(choices, choice)) & choices->viewport()->rect();
    QTest::mouseClick(choices->viewport(), Qt::LeftButton, Qt::NoModifier, seen.center());
}

void TTour::Choose_Group(const QString& group)
{
    Choose_Entry(Find<QComboBox>("report_group"), group);
}

// Pictures

void TTour::Take_Picture(const QString& name)
{
    Take_Picture_Of(d_window, name);
}

void TTour::Take_Picture_Of(const QWidget* widget, const QString& name)
{
    Take_Picture_Of(widget, widget->rect(), name);
}

void TTour::Take_Picture_Of(const QWidget* widget, const QRect& part, const QString& name)
{
    const QString file = d_pictures.filePath(name + ".png");

    Expect(Screen::Take_Picture(widget, part, file), "the picture is written: " + file);
}

// Expectations

void TTour::Expect(bool condition, const QString& what)
{
    if (!condition) {
        d_succeeded = false;
        QTextStream(stderr) << "Not as expected: " << what << '\n';
    }
}

void TTour::Expect_Text(const QString& shown, const QString& wanted, const QString& what)
{
    Expect(shown == wanted, QString("%1 shows \"%2\", not \"%3\"").arg(what, wanted, shown));
}

void TTour::Expect_Window_Active()
{
    Expect(Screen::Make_Active(d_window), "the window is active");
}
