#include "core/messagebox.h"

#include "core/describe.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QScopedValueRollback>
#include <QTextDocument>
#include <QTextOption>

namespace {

const char* const STYLE_SHEET = "dialogbuttonbox-buttons-have-icons: 0;\nbutton-layout: 1;";
const char* const MAIN_TEXT = R"(<span style="font-size:10pt; font-weight:600; color:#000000;" >%1</span>)";
const char* const INFORMATIVE_TEXT = R"(<span style="font-size:10pt; font-weight:400; color:#000000;" >%1</span>)";

// Every role is set, so that nothing of a dark theme shines through.
QPalette Light_Palette()
{
    QPalette palette(QColor(239, 239, 239), QColor(239, 239, 239));

    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0, 0, 192));
    palette.setColor(QPalette::LinkVisited, QColor(96, 0, 128));
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    return palette;
}

// Lets a long word, as the name of a file may be one, break where the label ends. A label has no such mode; it is set
// on the document with which the label draws rich text, once the label has laid that out.
void Wrap_Anywhere(QLabel* label)
{
    label->heightForWidth(label->width());
    for (QTextDocument* document : label->findChildren<QTextDocument*>()) {
        QTextOption option = document->defaultTextOption();
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        document->setDefaultTextOption(option);
    }
    label->updateGeometry();
}

} // namespace

TMessageBox::TMessageBox(const QWidget* parent) : QMessageBox(const_cast<QWidget*>(parent))
{
    setTextFormat(Qt::RichText);
    setStyleSheet(STYLE_SHEET);
    setPalette(Light_Palette());
    Fix_Width();
}

void TMessageBox::setText(const QString& text)
{
    QMessageBox::setText(QString(MAIN_TEXT).arg(text));
}

void TMessageBox::setInformativeText(const QString& text)
{
    QMessageBox::setInformativeText(QString(INFORMATIVE_TEXT).arg(text));
}

void TMessageBox::Send_Key(int key)
{
    QCoreApplication::postEvent(this, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    QCoreApplication::postEvent(this, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier));
}

int TMessageBox::exec()
{
    // Qt would return at once, without an answer: a session that ends closes the window behind an open question, and
    // a screen reader presses a button behind it.
    if (d_is_running) {
        return No;
    }
    const QScopedValueRollback<bool> running(d_is_running, true);
    return QDialog::exec();
}

void TMessageBox::showEvent(QShowEvent* event)
{
    QMessageBox::showEvent(event);
    Spread_Palette();
    Describe_Buttons();
    Fix_Width();
}

void TMessageBox::resizeEvent(QResizeEvent* event)
{
    QMessageBox::resizeEvent(event);
    Fix_Width();
}

void TMessageBox::Fix_Width()
{
    setFixedWidth(d_width);
    if (isVisible()) {
        Fit_Height();
    }
}

void TMessageBox::Fit_Height()
{
    // The base has chosen the height for another width.
    for (QLabel* label : findChildren<QLabel*>()) {
        Wrap_Anywhere(label);
    }
    layout()->activate();
    setFixedHeight(layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(d_width)
                                                 : layout()->totalMinimumSize().height());
    // The base answers a layout request by fixing its own size, which would lead here again and again.
    QCoreApplication::removePostedEvents(this, QEvent::LayoutRequest);
}

void TMessageBox::Describe_Buttons()
{
    if (QAbstractButton* yes = button(Yes)) {
        Describe(yes, tr("Go on"), tr("Goes on with what the question is about."));
    }
    if (QAbstractButton* no = button(No)) {
        Describe(no, tr("Leave everything as it is"), tr("Stops here and leaves everything as it is."));
    }
}

void TMessageBox::Spread_Palette()
{
    // Children of a widget with a style sheet do not inherit its palette.
    for (QWidget* child : findChildren<QWidget*>()) {
        child->setPalette(palette());
    }
}
