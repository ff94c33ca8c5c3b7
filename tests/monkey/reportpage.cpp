#include "tests/monkey/reportpage.h"

#include "tests/monkey/userinput.h"
#include "tests/support/guiacts.h"
#include "tests/support/shownrecord.h"

#include <QComboBox>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

const char* const TAB = "Report";

QTreeWidget* Table(const QWidget* window)
{
    return Child<QTreeWidget>(window, "report_table");
}

QComboBox* Group_Box(const QWidget* window)
{
    return Child<QComboBox>(window, "report_group");
}

// A group that cannot be reported brings the log to the front.
void Show_Page(const QWidget* window)
{
    if (!Group_Box(window)->isVisible()) {
        Select_Tab(Child<QTabWidget>(window, "pages"), TAB);
        User_Input::Settle();
    }
}

} // namespace

bool Report_Page::Is_Shown(const QWidget* window)
{
    const QComboBox* box = Group_Box(window);

    return box->isVisible() && box->currentIndex() > 0;
}

std::vector<QStringList> Report_Page::Rows(const QWidget* window)
{
    const QTreeWidget* table = Table(window);
    std::vector<QStringList> rows;

    for (int row = 0; row < table->topLevelItemCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < COLUMN_COUNT; ++column) {
            texts << Escaped(table->topLevelItem(row)->text(column));
        }
        rows.push_back(texts);
    }
    return rows;
}

bool Report_Page::Show_Rows(QWidget* window)
{
    Show_Page(window);
    for (int index = 1; index < Group_Box(window)->count() && Table(window)->topLevelItemCount() == 0; ++index) {
        Choose_Group(window, index);
    }
    Show_Page(window);
    return Table(window)->topLevelItemCount() > 0;
}

void Report_Page::Choose_Group(const QWidget* window, int index)
{
    Show_Page(window);
    Choose_Entry(Group_Box(window), Group_Box(window)->itemText(index));
    User_Input::Settle();
}
