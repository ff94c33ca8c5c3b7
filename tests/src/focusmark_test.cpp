#include "tests/support/filledpages.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QTabBar>

#include <utility>
#include <vector>

namespace {

struct TLook
{
    const char* page;
    bool is_dark;
};

/// The focus is seen where a control looks different while it has it.
class TFocusMark : public TFilledPagesFixture, public ::testing::WithParamInterface<TLook>
{
protected:
    TFocusMark()
    {
        // A caret comes and goes by itself.
        QApplication::setCursorFlashTime(0);
        if (GetParam().is_dark) {
            QApplication::setPalette(Dark_Palette());
        }
        Turn_To(GetParam().page);
    }

    void TearDown() override { QApplication::setPalette(QPalette()); }

    QImage Picture(const QWidget* widget)
    {
        QCoreApplication::processEvents();
        return d_editor.grab(QRect(widget->mapTo(&d_editor, QPoint()), widget->size())).toImage();
    }
};

TEST_P(TFocusMark, Is_on_every_control_that_has_the_focus)
{
    const QTabBar* tabs = Find<QTabWidget>("pages")->tabBar();
    std::vector<std::pair<QWidget*, QImage>> focused;

    Find<QTabWidget>("pages")->tabBar()->setFocus();
    do {
        Press(Qt::Key_Tab);
        focused.emplace_back(QApplication::focusWidget(), Picture(QApplication::focusWidget()));
    } while (QApplication::focusWidget() != tabs && focused.size() < 100);
    QApplication::focusWidget()->clearFocus();

    EXPECT_GT(focused.size(), 1U);
    for (const auto& look : focused) {
        EXPECT_NE(Picture(look.first), look.second) << Name_Of(look.first).toStdString();
    }
}

// Their entries would look focused without it, but not the whole of them.
TEST_P(TFocusMark, Frames_each_list_and_text_view_that_has_the_focus)
{
    int frames = 0;

    for (QWidget* widget : Focusable_Widgets(&d_editor)) {
        if (qobject_cast<QAbstractScrollArea*>(widget) != nullptr) {
            ++frames;
            widget->setFocus();
            const QRgb mark = Picture(widget).pixel(0, widget->height() / 2);
            widget->clearFocus();
            EXPECT_EQ(mark, widget->palette().color(QPalette::Highlight).rgb()) << Name_Of(widget).toStdString();
            EXPECT_NE(Picture(widget).pixel(0, widget->height() / 2), mark) << Name_Of(widget).toStdString();
        }
    }
    EXPECT_GE(frames, 1);
}

std::vector<TLook> Looks()
{
    std::vector<TLook> looks;
    for (const char* page : PAGE_LABELS) {
        looks.push_back({page, false});
        looks.push_back({page, true});
    }
    return looks;
}

INSTANTIATE_TEST_SUITE_P(, TFocusMark, ::testing::ValuesIn(Looks()), [](const auto& row) {
    return QString(row.param.page).remove(' ').toStdString() + (row.param.is_dark ? "_dark" : "_light");
});

} // namespace
