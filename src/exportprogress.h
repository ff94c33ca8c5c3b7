#pragma once

#include <QDialog>

#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

/// How far an export is, and the way to cancel it. It comes up by itself once the export has run for PATIENCE_MS and
/// has lengths still to come, and is gone with the object:
///
///     TExportProgress progress(count, this);
///     for (int index = 0; index < count; ++index) {
///         if (!progress.Go_On(index)) ...      // cancelled
///         ...
///     }
///     if (!progress.Go_On(count)) ...          // cancelled at the last length
class TExportProgress : public QDialog
{
    Q_OBJECT

public:
    /// The ms since the export began.
    using TClock = std::function<qint64()>;

    /// An export that takes no longer than this shows nothing.
    static constexpr qint64 PATIENCE_MS = 500;

    /// A clock that starts now.
    static TClock Started_Clock();

    explicit TExportProgress(int length_count, QWidget* parent = nullptr, TClock clock = Started_Clock());

    /// To be called in front of each length and after the last one, with the number of lengths that are done. Once the
    /// dialog is shown, the user's input is taken here, and mouse and keyboard reach only the dialog; before, nothing
    /// is taken. A screen reader presses a control past any dialog: the caller has to bear that. False, and the dialog
    /// is hidden, when the export is cancelled.
    bool Go_On(int done);

public slots:
    /// Cancels the export. The dialog stays until Go_On has taken all input, which would reach the window behind it.
    void reject() override;

private:
    void Create_Controls();
    void Create_Layout();
    void Describe_Controls();

    int d_length_count;
    TClock d_clock;
    bool d_is_shown = false;
    bool d_is_cancelled = false;

    QLabel* d_label = nullptr;
    QProgressBar* d_bar = nullptr;
    QPushButton* d_cancel_button = nullptr;
};
