#include "core/readablestyle.h"
#include "tests/support/guiacts.h"

#include <QApplication>
#include <QListWidget>
#include <QPalette>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

QPalette Polished(QPalette palette)
{
    TReadableStyle().polish(palette);
    return palette;
}

TEST(TReadableStyle, Is_Fusion_by_name)
{
    EXPECT_EQ(TReadableStyle().objectName(), "fusion");
}

TEST(TReadableStyle, Darkens_a_disabled_text_that_is_too_pale_for_a_light_ground)
{
    QPalette pale(QColor(239, 239, 239));
    pale.setColor(QPalette::Disabled, QPalette::WindowText, QColor(190, 190, 190));

    const QColor mended = Polished(pale).color(QPalette::Disabled, QPalette::WindowText);

    EXPECT_LT(mended.lightness(), 125);
    EXPECT_GT(mended.lightness(), 95);
}

TEST(TReadableStyle, Lightens_a_disabled_text_that_is_too_dim_for_a_dark_ground)
{
    QPalette dim(QColor(53, 53, 53));
    dim.setColor(QPalette::WindowText, Qt::white);
    dim.setColor(QPalette::Disabled, QPalette::WindowText, QColor(90, 90, 90));

    const QColor mended = Polished(dim).color(QPalette::Disabled, QPalette::WindowText);

    EXPECT_GT(mended.lightness(), 140);
    EXPECT_LT(mended.lightness(), 170);
}

TEST(TReadableStyle, Keeps_colours_that_can_be_read)
{
    QPalette good(QColor(239, 239, 239));
    good.setColor(QPalette::Disabled, QPalette::Text, QColor(80, 80, 80));
    good.setColor(QPalette::Highlight, QColor(0, 0, 120));
    good.setColor(QPalette::HighlightedText, Qt::white);

    const QPalette polished = Polished(good);

    EXPECT_EQ(polished.color(QPalette::Disabled, QPalette::Text), QColor(80, 80, 80));
    EXPECT_EQ(polished.color(QPalette::Highlight), QColor(0, 0, 120));
    EXPECT_EQ(polished.color(QPalette::Active, QPalette::Text), good.color(QPalette::Active, QPalette::Text));
}

TEST(TReadableStyle, Darkens_the_ground_of_a_selected_text_that_is_white)
{
    QPalette pale(QColor(239, 239, 239));
    pale.setColor(QPalette::Highlight, QColor(48, 140, 198));
    pale.setColor(QPalette::HighlightedText, Qt::white);

    const QColor mended = Polished(pale).color(QPalette::Highlight);

    EXPECT_LT(mended.lightness(), QColor(48, 140, 198).lightness());
    EXPECT_NEAR(mended.hslHue(), QColor(48, 140, 198).hslHue(), 2);
}

TEST(TReadableStyle, Lightens_the_ground_of_a_selected_text_that_is_black)
{
    QPalette dim(QColor(239, 239, 239));
    dim.setColor(QPalette::Highlight, QColor(48, 80, 120));
    dim.setColor(QPalette::HighlightedText, Qt::black);

    const QColor mended = Polished(dim).color(QPalette::Highlight);

    EXPECT_GT(mended.lightness(), QColor(48, 80, 120).lightness());
    EXPECT_NEAR(mended.hslHue(), QColor(48, 80, 120).hslHue(), 2);
}

TEST(TReadableStyle, Brings_a_disabled_text_no_further_than_the_active_one)
{
    QPalette pale(QColor(239, 239, 239));
    pale.setColor(QPalette::WindowText, QColor(170, 170, 170));
    pale.setColor(QPalette::Disabled, QPalette::WindowText, QColor(190, 190, 190));

    EXPECT_EQ(Polished(pale).color(QPalette::Disabled, QPalette::WindowText), QColor(170, 170, 170));
}

TEST(TReadableStyle, Frames_a_list_without_entries_while_it_has_the_focus)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* list = new QListWidget;
    auto* other = new QListWidget;
    layout->addWidget(list);
    layout->addWidget(other);
    Show_Active(&window);

    list->setFocus();
    const QImage focused = list->grab().toImage();
    other->setFocus();
    const QImage plain = list->grab().toImage();

    const QRgb mark = list->palette().color(QPalette::Highlight).rgb();
    EXPECT_EQ(focused.pixel(0, list->height() / 2), mark);
    EXPECT_NE(plain.pixel(0, list->height() / 2), mark);
}

TEST(TReadableStyle, Leaves_a_frame_that_holds_no_list_plain_while_it_has_the_focus)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* frame = new QFrame;
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFocusPolicy(Qt::StrongFocus);
    frame->setMinimumSize(100, 40);
    layout->addWidget(frame);
    Show_Active(&window);

    frame->setFocus();
    ASSERT_EQ(QApplication::focusWidget(), frame);

    EXPECT_NE(frame->grab().toImage().pixel(0, frame->height() / 2), frame->palette().color(QPalette::Highlight).rgb());
}

TEST(TReadableStyle, Outlines_a_button_without_a_veil_over_its_icon_once_the_focus_came_by_a_key)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* other = new QToolButton;
    auto* button = new QToolButton;
    button->setAutoRaise(true);
    layout->addWidget(other);
    layout->addWidget(button);
    Show_Active(&window);
    other->setFocus(Qt::TabFocusReason);
    const QImage plain = button->grab().toImage();

    QTest::keyClick(other, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), button);
    const QImage focused = button->grab().toImage();

    const QRgb mark = button->palette().color(QPalette::Highlight).rgb();
    const QRect inner = button->rect().adjusted(1, 1, -1, -1);
    EXPECT_EQ(focused.pixel(0, button->height() / 2), mark);
    EXPECT_EQ(focused.pixel(button->width() - 1, 0), mark);
    EXPECT_NE(plain.pixel(0, button->height() / 2), mark);
    EXPECT_EQ(focused.copy(inner), plain.copy(inner));
}

} // namespace
