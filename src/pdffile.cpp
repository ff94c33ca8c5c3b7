#include "src/pdffile.h"

#include "core/filewriter.h"
#include "src/reportwidget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

QByteArray File_Bytes(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Prints into a new folder, which is gone afterwards with all that it took of the disk. What could not be printed is
// missing or cut.
QByteArray Printed_Document(const TReportWidget& page, const QString& folder_template)
{
    const QTemporaryDir folder(folder_template);
    if (!folder.isValid()) {
        return {};
    }
    const QString draft = folder.filePath("export.pdf");
    page.Write_Export_PDF_Data(draft);
    return File_Bytes(draft);
}

} // namespace

bool Write_PDF_File(const TReportWidget& page, const QString& name, QString* reason)
{
    Ignore_Write_Signals(); // The printer's writes, too.

    QByteArray document = Printed_Document(page, QFileInfo(name).absoluteDir().filePath(".export-XXXXXX"));
    if (!Is_Whole_PDF(document)) {
        // The folder takes no new files or has no room; whether the target can be written shows when it is.
        document = Printed_Document(page, QDir::temp().filePath("export-XXXXXX"));
    }
    if (!Is_Whole_PDF(document)) {
        *reason = "The document could not be completed.";
        return false;
    }
    return Write_Whole_File(name, document, reason) == TFileWrite::Done;
}

bool Is_Whole_PDF(const QByteArray& bytes)
{
    return bytes.startsWith("%PDF-") && bytes.trimmed().endsWith("%%EOF");
}
