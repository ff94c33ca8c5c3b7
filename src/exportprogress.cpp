#include "src/exportprogress.h"

#include "core/describe.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

TExportProgress::TClock TExportProgress::Started_Clock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

TExportProgress::TExportProgress(int length_count, QWidget* parent, TClock clock)
    : QDialog(parent), d_length_count(length_count), d_clock(std::move(clock))
{
    setObjectName("export_progress");
    setWindowTitle(tr("Export"));
    setModal(true);
    resize(315, 100);
    Create_Controls();
    Create_Layout();
    Describe_Controls();
}

bool TExportProgress::Go_On(int done)
{
    if (!d_is_shown && (done == d_length_count || d_clock() < PATIENCE_MS)) {
        return true;
    }
    d_label->setText(tr("Length %1 of %2").arg(std::min(done + 1, d_length_count)).arg(d_length_count));
    d_bar->setValue(done);
    if (!d_is_shown) {
        d_is_shown = true;
        show();
    }
    QCoreApplication::processEvents();
    if (d_is_cancelled) {
        QDialog::reject();
    }
    return !d_is_cancelled;
}

// Escape and closing the dialog lead here as well.
void TExportProgress::reject()
{
    d_is_cancelled = true;
}

void TExportProgress::Create_Controls()
{
    d_label = new QLabel(this);
    d_label->setObjectName("progress_label");

    d_bar = new QProgressBar(this);
    d_bar->setObjectName("progress_bar");
    d_bar->setAccessibleName(tr("Lengths done"));
    d_bar->setRange(0, d_length_count);

    d_cancel_button = new QPushButton(tr("Cancel"), this);
    d_cancel_button->setObjectName("cancel_button");
    // A Return that was meant for the page, before the dialog came up, shall not cancel.
    d_cancel_button->setAutoDefault(false);
    connect(d_cancel_button, &QPushButton::clicked, this, &TExportProgress::reject);
}

void TExportProgress::Create_Layout()
{
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(d_cancel_button);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(d_label);
    layout->addWidget(d_bar);
    layout->addLayout(buttons);
}

void TExportProgress::Describe_Controls()
{
    Describe(d_bar, tr("The part of the lengths that is done"),
             tr("The part of the lengths of the report range at which the group has been evaluated. The file is "
                "written when all of them are done."));
    Describe(d_cancel_button, tr("Cancel the export"),
             tr("Cancels the export: no file is written, and an older file of that name stays as it is. Escape does "
                "the same."));
}
