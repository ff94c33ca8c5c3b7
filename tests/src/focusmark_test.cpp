#include "tests/support/filledpages.h"

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

    ~TFocusMark() override { QApplication::setPalette(QPalette()); }

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
