#pragma once

#include <QLabel>
#include <QStringList>

/// A heading in 18 point, underlined, for a name of any length. The text is plain text and never widens its page: it
/// takes up to three lines and breaks also where there is no blank. A longer one ends in an ellipsis and stands whole
/// in the tool tip.
class TTitleLabel : public QLabel
{
    Q_OBJECT

public:
    explicit TTitleLabel(const QString& text, QWidget* parent = nullptr);

    /// One line of a few characters: the page, never its title, decides about the width.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;
    int heightForWidth(int width) const override;

    /// The lines as they are drawn, the last one elided where the text goes on.
    QStringList Shown_Lines() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QStringList Lines(int width) const;
};
