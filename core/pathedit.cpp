#include "core/pathedit.h"

#include "core/describe.h"

#include <QHBoxLayout>
#include <QResizeEvent>
#include <QToolButton>

TPathEdit::TPathEdit(const QWidget* parent, Qt::WindowFlags flags)
    : QLineEdit(const_cast<QWidget*>(parent)), d_browse_button(new QToolButton(this))
{
    setWindowFlags(windowFlags() | flags);

    d_browse_button->setObjectName("browse_button");
    d_browse_button->setText("...");
    d_browse_button->setAccessibleName(tr("Browse"));
    Describe(d_browse_button, tr("Browse for a directory"),
             tr("Opens a dialog in which to choose the directory instead of typing its path."));
    d_browse_button->setCursor(Qt::ArrowCursor);
    d_browse_button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    connect(d_browse_button, &QToolButton::clicked, this, &TPathEdit::Browse_Path_Clicked);

    auto* row = new QHBoxLayout(this);
    row->setSpacing(0);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    row->addWidget(d_browse_button);

    // The text ends before the button.
    setTextMargins(0, 0, d_browse_button->sizeHint().width(), 0);
}

void TPathEdit::Set_Cell(int row, int column)
{
    d_row = row;
    d_column = column;
}

void TPathEdit::Browse_Path_Clicked()
{
    emit Browse_Path(text(), d_row, d_column);
}

void TPathEdit::resizeEvent(QResizeEvent* event)
{
    const QSize text_size(event->size().width() - d_browse_button->width(), event->size().height());
    QResizeEvent text_event(text_size, size());

    QWidget::resizeEvent(&text_event);
}
