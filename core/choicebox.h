#pragma once

#include <QComboBox>

/// The in-place editor of a selection list: a combo box that also tells of a choice that changes nothing, for callers
/// to whom the entry shown may stand for something else.
class TChoiceBox : public QComboBox
{
    Q_OBJECT

public:
    explicit TChoiceBox(QWidget* parent = nullptr);

    void showPopup() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// In the opened list the user chose, by mouse or keyboard, the entry that was shown already. Any other choice is
    /// told by currentIndexChanged alone.
    void Shown_Item_Chosen(int item);

private:
    void Report_Shown_Item(int item);

    // The user has pressed a mouse button or a key in the list since it opened, and the entry has not changed.
    bool d_is_choosing = false;
};
