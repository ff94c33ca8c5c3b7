#include "tests/support/exportfixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

QByteArray TExportFixture::Bytes(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail_Missing("file " + path);
    }
    return file.readAll();
}

QStringList TExportFixture::Files(const QString& folder) const
{
    return QDir(folder.isEmpty() ? d_folder.path() : folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

void TExportFixture::Show_Report(const QString& group)
{
    Show_Page("Report");
    Choose_Entry(Find<QComboBox>("report_group"), group);
}

void TExportFixture::Choose_Identifier(const QString& component, const QString& identifier)
{
    auto* rows = Find<QTreeWidget>("report_table");
    const QModelIndex row = Entry(rows, component);
    Click_Entry(rows, row.sibling(row.row(), 1));
    auto* combo = Open_Editor<QComboBox>(rows);
    if (combo == nullptr) {
        Fail_Missing("identifiers of " + component);
    }
    QAbstractItemView* list = combo->view();
    QTest::keyClick(combo, Qt::Key_F4);
    if (!QTest::qWaitFor([list] { return list->isVisible(); })) {
        Fail_Missing("opened list of identifiers");
    }
    // The list may be narrower than its entries. The report that follows takes it away.
    const QRect seen = list->visualRect(Entry(list, identifier)) & list->viewport()->rect();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, seen.center());
}

void TExportFixture::Type_Range(const QString& start, const QString& end, const QString& increment)
{
    Show_Page("Variables");
    Replace_Text(Find<QLineEdit>("start_position"), start);
    Replace_Text(Find<QLineEdit>("end_position"), end);
    Replace_Text(Find<QLineEdit>("increment"), increment);
    Show_Page("Report");
}

void TExportFixture::Click_Export_CSV()
{
    QTest::mouseClick(Find<QPushButton>("export_csv"), Qt::LeftButton);
}

void TExportFixture::Click_Export_PDF()
{
    QTest::mouseClick(Find<QPushButton>("export_pdf"), Qt::LeftButton);
}

void TExportFixture::Export_CSV(const QString& path)
{
    d_answer.Choose_File(path);
    Click_Export_CSV();
}

void TExportFixture::Show_Page(const QString& label)
{
    Select_Tab(Find<QTabWidget>("pages"), label);
}
