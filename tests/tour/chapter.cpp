#include "tests/tour/chapter.h"

#include <QFile>

TChapter::TChapter(const QString& file)
{
    QFile source(file);
    if (source.open(QIODevice::ReadOnly)) {
        d_text = QString::fromUtf8(source.readAll()).simplified();
    }
}

// Where lines break is the chapter's own business.
bool TChapter::Read_On(const QString& text)
{
    const int found = d_text.indexOf(text.simplified(), d_place);
    if (found < 0) {
        return false;
    }
    d_place = found + text.simplified().size();
    return true;
}
