#include "tests/faults/savedfile.h"

#include "src/norvexa.h"
#include "src/pdffile.h"
#include "src/reportwidget.h"

#include <QComboBox>
#include <QFile>
#include <QTemporaryDir>

#include <ostream>
#include <stdexcept>

namespace {

constexpr int POSITIONS = 11;

/// The bytes without what stands between the marks.
QByteArray Without_Date(QByteArray bytes, const QByteArray& begin, char end)
{
    const int start = bytes.indexOf(begin);
    const int stop = start < 0 ? -1 : bytes.indexOf(end, start + begin.size());
    return stop < 0 ? bytes : bytes.remove(start + begin.size(), stop - start - begin.size());
}

QByteArray Without_Date(const QByteArray& bytes)
{
    return Without_Date(Without_Date(bytes, "/CreationDate (", ')'), "File_Revision=\"", '"');
}

QString Component_Name(int generation, int index)
{
    return QString("Component %1 of generation %2").arg(index).arg(generation);
}

void Collect(TReportWidget* page, const QString& component)
{
    for (int index = 0; index < POSITIONS; ++index) {
        TReportWidget::TReportData record;
        record.name = component;
        record.items = {{"Drift", "Constant", "0.001", "1.000000", "Rectangular", "Type B", 1.732051, QString(),
                         0.001 + 0.0001 * index}};
        page->Add_Export_Data(record, 100.0 * index);
    }
}

} // namespace

const char* Name_Of(TFileKind kind)
{
    switch (kind) {
    case TFileKind::Budget:
        return "Budget";
    case TFileKind::CSV:
        return "CSV";
    default:
        return "PDF";
    }
}

void PrintTo(TFileKind kind, std::ostream* stream)
{
    *stream << Name_Of(kind);
}

class TSavedFile::TSource
{
public:
    TSource() = default;
    virtual ~TSource() = default;
    Q_DISABLE_COPY(TSource)

    virtual QString Save(const QString& name) const = 0;
};

class TSavedFile::TBudgetSource : public TSavedFile::TSource
{
public:
    TBudgetSource(int generation, int size)
    {
        for (int index = 0; index < size; ++index) {
            d_document.Add_Component(Component_Name(generation, index));
        }
    }

    QString Save(const QString& name) const override
    {
        return d_document.Save(name, {}, {}, TInputData()) ? QString() : d_document.Last_Error();
    }

private:
    TNorvexa d_document;
};

class TSavedFile::TExportSource : public TSavedFile::TSource
{
public:
    TExportSource(TFileKind kind, int generation, int size) : d_kind(kind)
    {
        const QString group = QString("Generation %1").arg(generation);
        d_page.Update_Report_Groups({group});
        d_page.findChild<QComboBox*>("report_group")->setCurrentText(group);
        for (int index = 0; index < size; ++index) {
            Collect(&d_page, Component_Name(generation, index));
        }
        d_page.Update_Export_Uncertainty_Data();
        d_page.Format_Export_Data();
    }

    QString Save(const QString& name) const override
    {
        QString reason;
        if (d_kind == TFileKind::PDF) {
            return Write_PDF_File(d_page, name, &reason) ? QString() : reason;
        }
        return d_page.Write_Export_CSV_Data(name) ? QString() : d_page.Last_Error();
    }

private:
    TFileKind d_kind;
    TReportWidget d_page;
};

TSavedFile::TSavedFile(TFileKind kind, int generation, int size)
{
    if (kind == TFileKind::Budget) {
        d_source = std::make_unique<TBudgetSource>(generation, size);
    } else {
        d_source = std::make_unique<TExportSource>(kind, generation, size);
    }
    const QTemporaryDir folder;
    QFile file(folder.filePath("file"));
    if (!Save(file.fileName()).isEmpty() || !file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("the file cannot be saved even without a fault");
    }
    d_content = Without_Date(file.readAll());
}

TSavedFile::~TSavedFile() = default;

QString TSavedFile::Save(const QString& name) const
{
    return d_source->Save(name);
}

bool TSavedFile::Is_Whole_In(const QByteArray& bytes) const
{
    return Without_Date(bytes) == d_content;
}
