#pragma once

#include <QString>

/// Numbers as texts: a point as decimal separator under every locale, in files, fields and reports.

/// The finite number that `text` stands for; 0.0 for a text that is no number, is infinite or is "nan".
double Finite_Number(const QString& text);

/// Whether `text` stands for a finite number.
bool Is_Finite_Number(const QString& text);

/// `value` in fixed notation with exactly `decimals` digits after the point.
QString Fixed_Text(double value, int decimals);
