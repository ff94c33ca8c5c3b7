#pragma once

#include <QString>

/// A chapter of the manual, read from its beginning to its end, so that whoever follows it does so in its order.
class TChapter
{
public:
    /// A file that cannot be read makes an empty chapter.
    explicit TChapter(const QString& file);

    /// Reads on to the end of the next `text`. Whether it comes; if not, the place stays.
    bool Read_On(const QString& text);

private:
    QString d_text;
    int d_place = 0;
};
