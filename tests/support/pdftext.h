#pragma once

#include <QImage>
#include <QMap>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <vector>

/// What a reader finds in a PDF document. The tools of poppler read it; what they cannot read is reported by
/// std::runtime_error, which fails the test.

/// A word and its place, in points from the top left corner of the page.
struct TPrintedWord
{
    QString text;
    QRectF box;
};

struct TPrintedPage
{
    QSizeF size;
    std::vector<TPrintedWord> words;

    /// The words that stand side by side, with a blank between them, from top to bottom.
    QStringList Rows() const;

    /// Words that stand on one another, leave the page or stand beyond its left and right margins.
    QStringList Misplaced_Words() const;
};

std::vector<TPrintedPage> Printed_Pages(const QString& file);

/// "Pages", "Page size", "Title" and the like.
QMap<QString, QString> Pdf_Properties(const QString& file);

/// The fonts that the document uses, each as "name: embedded" or "name: not embedded", in alphabetical order.
QStringList Pdf_Fonts(const QString& file);

/// A page (from 1) as a picture without smoothed edges.
QImage Pdf_Picture(const QString& file, int page, int dots_per_inch);
