#pragma once

#include <QByteArray>
#include <QString>

class TReportWidget;

/// Replaces the file `name` by the printed export of `page`, as Write_Whole_File does. A printer writes its file as it
/// goes and reports no error, so the document is made in a folder of its own, beside the target or where that one
/// takes no new files in the folder for temporary files, and looked at before it replaces anything. On failure `reason`
/// receives the reason and the old file is still there.
bool Write_PDF_File(const TReportWidget& page, const QString& name, QString* reason);

/// Whether `bytes` are a PDF document that was written to its end.
bool Is_Whole_PDF(const QByteArray& bytes);
