#pragma once

#include <QString>
#include <QStringList>

/// The fields of numbers that a budget file keeps.
namespace Number_Fields {

/// Of the variables page.
QStringList Of_Inputs();

/// Of the budget page, where they show the selected record.
QStringList Of_Records();

/// The digits after the point that page and file both keep of the field's number, in the unit of the field; -1 for a
/// field whose number is in no file.
int Decimals(const QString& field);

/// Whether a field that shows `text` and a file that has `held`, in the unit of the field, mean the same number. The
/// field may show more digits than the file keeps, or a text that counts as 0.
bool Agree(const QString& field, const QString& text, double held);

/// Whether the file keeps less of the number than the text says.
bool Is_Too_Fine(const QString& field, const QString& text);

} // namespace Number_Fields
