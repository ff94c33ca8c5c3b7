#include "src/reportwidget.h"

#include "tests/faults/faultycalls.h"
#include "tests/support/qtprinters.h"

#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace {

QByteArray Bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

TReportWidget::TExportData Record(const QString& component, const QString& item)
{
    TReportWidget::TExportData record;
    record.component = component;
    record.item.name = item;
    record.item.expression_type = "Constant";
    record.item.expression = "SUMSQ(3,4)*0.001";
    record.item.sensitivity = "1.000000";
    record.item.distribution = "Normal";
    record.item.uc_type = "Type B";
    record.item.value = 0.005;
    return record;
}

/// Files of the process can get no longer than `bytes` as long as it lives.
class TFileSizeLimit
{
public:
    explicit TFileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &d_former);
        const rlimit limit = {bytes, d_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~TFileSizeLimit() { setrlimit(RLIMIT_FSIZE, &d_former); }
    Q_DISABLE_COPY(TFileSizeLimit)

private:
    rlimit d_former = {};
};

class TReportWidgetCSV : public ::testing::Test
{
protected:
    void Collect(const QString& component = "Probe", const QString& item = "Ball")
    {
        for (const double length : {0.0, 500.0, 1000.0}) {
            d_page.Add_Export_Variable_Data({"", "Td", {0.5}});
            d_page.Add_Export_Variable_Data({component, "L", {length}});
            d_page.Add_Export_Data(Record(component, item), length);
        }
        d_page.Update_Export_Uncertainty_Data();
        d_page.Format_Export_Data();
    }

    void Choose_Group(const QString& group)
    {
        d_page.Update_Report_Groups({group});
        d_page.findChild<QComboBox*>("report_group")->setCurrentIndex(1);
    }

    QString Path(const QString& name = "export.csv") const { return d_folder.filePath(name); }
    QStringList Files() const { return QDir(d_folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir d_folder;
    TReportWidget d_page;
};

} // namespace

TEST_F(TReportWidgetCSV, Writes_the_four_sections)
{
    Choose_Group("Length");
    Collect();

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_EQ(Bytes(Path()), R"csv(Budget Definition - Length

Probe Component 
,Source,Value,Expression,Type,Sensitivity,Distribution,Divisor
,Ball,Constant,"SUMSQ(3,4)*0.001",Type B,1.000000,Normal,1.000000

Global Variables

,Td,0.500000

Budget Data

,,Position (mm),0.000,500.000,1000.000

Probe Component 
,Local Variables,L,0.000000000,500.000000000,1000.000000000
,Source,Ball,0.005000000,0.005000000,0.005000000

Uncertainty
,,Combined,0.005000000,0.005000000,0.005000000

,,Uc(K=1):,0.005000+0.000000L+0.000000L^2 mm  (L is length in meters)
,,Uc(K=2):,0.010000+0.000000L+0.000000L^2 mm  (L is length in meters)
)csv");
    EXPECT_EQ(d_page.Last_Error(), "");
}

TEST_F(TReportWidgetCSV, Writes_the_rest_when_no_curve_fits)
{
    d_page.Add_Export_Data(Record("Probe", "Ball"), 0.0);
    d_page.Update_Export_Uncertainty_Data();
    d_page.Format_Export_Data();

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_EQ(Bytes(Path()), R"csv(Budget Definition - <no selection>

Probe Component 
,Source,Value,Expression,Type,Sensitivity,Distribution,Divisor
,Ball,Constant,"SUMSQ(3,4)*0.001",Type B,1.000000,Normal,1.000000

Global Variables


Budget Data

,,Position (mm),0.000

Probe Component 
,Source,Ball,0.005000000

Uncertainty
,,Combined,0.005000000

,,,Uc(K=1):, ERR
,,,Uc(K=2):, ERR
)csv");
}

TEST_F(TReportWidgetCSV, Writes_Latin_1_and_question_marks_for_other_characters)
{
    Choose_Group(QString::fromUtf8("Länge µm"));
    Collect(QString::fromUtf8("Ø 5 °C"), QString::fromUtf8("α–ß"));

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    const QList<QByteArray> lines = Bytes(Path()).split('\n');
    EXPECT_EQ(lines.at(0), "Budget Definition - L\xE4nge \xB5m");
    EXPECT_EQ(lines.at(2), "\xD8 5 \xB0"
                           "C Component ");
    EXPECT_TRUE(lines.at(4).startsWith(",??\xDF,Constant,")) << lines.at(4).constData();
}

TEST_F(TReportWidgetCSV, Encloses_a_group_name_with_a_comma)
{
    Choose_Group("Length, \"short\"");

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_EQ(Bytes(Path()).split('\n').first(), R"("Budget Definition - Length, ""short""")");
}

TEST_F(TReportWidgetCSV, Prints_a_group_name_that_looks_like_a_format)
{
    Choose_Group("%1 %2");

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_EQ(Bytes(Path()).split('\n').first(), "Budget Definition - %1 %2");
}

TEST_F(TReportWidgetCSV, Replaces_a_longer_file_whole)
{
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100000, 'x'));
    file.close();
    Collect();

    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_FALSE(Bytes(Path()).contains("xx"));
    EXPECT_TRUE(Bytes(Path()).endsWith("L^2 mm  (L is length in meters)\n"));
    EXPECT_EQ(Files(), QStringList("export.csv"));
}

TEST_F(TReportWidgetCSV, Splits_a_line_into_its_cells_without_quotes)
{
    EXPECT_EQ(d_page.Split_CSV_Data(R"csv(,"5"" ball",Constant,"SUMSQ(3,4)",Type B)csv"),
              QStringList({"", "5\" ball", "Constant", "SUMSQ(3,4)", "Type B"}));
    EXPECT_EQ(d_page.Split_CSV_Data(",,Uc(K=1):,0.5+0.1L+0.2L^2 mm  (L is length in meters)"),
              QStringList({"", "", "Uc(K=1):", "0.5+0.1L+0.2L^2 mm  (L is length in meters)"}));
    EXPECT_EQ(d_page.Split_CSV_Data(",,,Uc(K=1):, ERR"), QStringList({"", "", "", "Uc(K=1):", " ERR"}));
    EXPECT_EQ(d_page.Split_CSV_Data(""), QStringList(""));
}

// Failures

TEST_F(TReportWidgetCSV, Says_why_a_file_cannot_be_opened)
{
    Collect();

    EXPECT_FALSE(d_page.Write_Export_CSV_Data(Path("no_folder/export.csv")));

    EXPECT_EQ(d_page.Last_Error(), "ERR:  No such file or directory");
    EXPECT_FALSE(QFileInfo::exists(Path("no_folder")));
}

TEST_F(TReportWidgetCSV, Says_why_a_folder_cannot_be_written)
{
    Collect();

    EXPECT_FALSE(d_page.Write_Export_CSV_Data(d_folder.path()));

    EXPECT_EQ(d_page.Last_Error(), "ERR:  Is a directory");
}

TEST_F(TReportWidgetCSV, Says_that_a_device_is_full)
{
    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));
    Collect();
    {
        const TFullDisk disk(d_folder.path());
        EXPECT_FALSE(d_page.Write_Export_CSV_Data(Path()));
    }

    EXPECT_EQ(d_page.Last_Error(), "ERR:  Cannot write file '" + Path() + "'.  Reason: No space left on device");
}

TEST_F(TReportWidgetCSV, Keeps_the_old_file_when_the_new_one_does_not_fit)
{
    ASSERT_TRUE(d_page.Write_Export_CSV_Data(Path()));
    const QByteArray old = Bytes(Path());
    Collect();
    {
        const TFileSizeLimit limit(300);
        EXPECT_FALSE(d_page.Write_Export_CSV_Data(Path()));
    }

    EXPECT_EQ(d_page.Last_Error(), "ERR:  Cannot write file '" + Path() + "'.  Reason: File too large");
    EXPECT_EQ(Bytes(Path()), old);
    EXPECT_EQ(Files(), QStringList("export.csv"));
}

TEST_F(TReportWidgetCSV, Leaves_no_file_when_the_new_one_does_not_fit)
{
    Collect();
    {
        const TFileSizeLimit limit(300);
        EXPECT_FALSE(d_page.Write_Export_CSV_Data(Path()));
    }

    EXPECT_EQ(Files(), QStringList());
}

TEST_F(TReportWidgetCSV, Forgets_an_error_once_a_file_is_written)
{
    EXPECT_FALSE(d_page.Write_Export_CSV_Data(Path("no_folder/export.csv")));

    EXPECT_TRUE(d_page.Write_Export_CSV_Data(Path()));

    EXPECT_EQ(d_page.Last_Error(), "");
}
