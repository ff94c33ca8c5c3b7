#include "src/applicationlook.h"

#include "core/readablestyle.h"

#include <QApplication>
#include <QIcon>

void Set_Application_Look()
{
    QApplication::setStyle(new TReadableStyle);
    QApplication::setWindowIcon(QIcon(":/icons/norvexaeditor.png"));
}
