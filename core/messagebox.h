#pragma once

#include <QMessageBox>

/// The program's message box: texts as rich text in a fixed black 10-point style, and always 500 pixels wide. It keeps
/// a light palette of its own, so that the black texts read well in a dark theme too.
class TMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    explicit TMessageBox(const QWidget* parent = nullptr);

    /// Show a text in the box's style. The text goes in as it is and may hold markup; escape what does not mean any.
    /// These hide the functions of QMessageBox, which are not virtual: call them through a TMessageBox.
    void setText(const QString& text);
    void setInformativeText(const QString& text);

    /// Posts a press and a release of `key` (Qt::Key) to the box, as if the user had pressed it. This answers the box
    /// once its exec() runs.
    void Send_Key(int key);

public slots:
    /// Runs the box modally and returns the standard button that closed it; No if it is running already.
    int exec() override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Fix_Width();
    void Fit_Height();
    void Describe_Buttons();
    void Spread_Palette();

    int d_width = 500; // pixels
    bool d_is_running = false;
};
