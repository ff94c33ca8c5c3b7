#include "src/titlelabel.h"

#include "tests/support/guiacts.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QHelpEvent>
#include <QImage>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

#include <gtest/gtest.h>

namespace {

const int WIDTH = 300;

class TTitleLabelTest : public ::testing::Test
{
protected:
    TTitleLabelTest() { Show_Active(&d_title); }

    void TearDown() override { QToolTip::hideText(); }

    // As a layout does it: the width is given, the label says how high it has to be.
    void Show_Text(const QString& text)
    {
        d_title.setText(text);
        d_title.resize(WIDTH, d_title.heightForWidth(WIDTH));
    }

    int Line_Height() const { return d_title.fontMetrics().lineSpacing(); }

    // The mouse rests on the title while another tool tip is still on show.
    void Hover()
    {
        QToolTip::showText(QPoint(), "before", &d_title);
        QHelpEvent hover(QEvent::ToolTip, QPoint(5, 5), d_title.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&d_title, &hover);
    }

    void Expect_No_Tool_Tip()
    {
        Hover();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    }

    void Expect_Whole_Text_As_Tool_Tip()
    {
        Hover();
        EXPECT_TRUE(QToolTip::isVisible());
        EXPECT_EQ(QToolTip::text(), Qt::convertFromPlainText(d_title.text()));
    }

    TTitleLabel d_title{"Title"};
};

TEST_F(TTitleLabelTest, Is_18_points_underlined_at_the_top_left)
{
    EXPECT_EQ(d_title.text(), "Title");
    EXPECT_EQ(d_title.font().pointSize(), 18);
    EXPECT_TRUE(d_title.font().underline());
    EXPECT_EQ(d_title.alignment(), Qt::AlignTop | Qt::AlignLeft);
}

TEST_F(TTitleLabelTest, Takes_no_width_and_one_line_of_its_page_however_long_the_text)
{
    const QSize size = d_title.sizeHint();
    EXPECT_EQ(size.height(), Line_Height());
    EXPECT_LT(size.width(), 200);

    d_title.setText(QString("x").repeated(1000));
    EXPECT_EQ(d_title.sizeHint(), size);
    EXPECT_EQ(d_title.minimumSizeHint(), size);
}

TEST_F(TTitleLabelTest, Shows_a_short_text_on_one_line_and_letter_by_letter)
{
    Show_Text("<b>A</b> & B");

    EXPECT_EQ(d_title.height(), Line_Height());
    EXPECT_EQ(d_title.Shown_Lines(), QStringList({"<b>A</b> & B"}));
    Expect_No_Tool_Tip();
}

TEST_F(TTitleLabelTest, An_empty_text_keeps_its_line)
{
    Show_Text("");

    EXPECT_EQ(d_title.height(), Line_Height());
    EXPECT_EQ(d_title.Shown_Lines().join(""), "");
    Expect_No_Tool_Tip();
}

TEST_F(TTitleLabelTest, Breaks_between_words)
{
    const QString half = QString("x").repeated(WIDTH / 2 / d_title.fontMetrics().horizontalAdvance('x') + 1);
    Show_Text(half + " " + half);

    EXPECT_EQ(d_title.height(), 2 * Line_Height());
    EXPECT_EQ(d_title.Shown_Lines(), QStringList({half + " ", half}));
    Expect_No_Tool_Tip();
}

TEST_F(TTitleLabelTest, Breaks_a_word_that_is_wider_than_the_page)
{
    const QString word = QString("x").repeated(3 * WIDTH / 2 / d_title.fontMetrics().horizontalAdvance('x'));
    Show_Text(word);

    EXPECT_EQ(d_title.height(), 2 * Line_Height());
    EXPECT_EQ(d_title.Shown_Lines().size(), 2);
    EXPECT_EQ(d_title.Shown_Lines().join(""), word);
}

TEST_F(TTitleLabelTest, Ends_in_an_ellipsis_after_three_lines_and_stands_whole_in_the_tool_tip)
{
    const QString name = QString("name_without_blanks_").repeated(20);
    Show_Text(name);

    EXPECT_EQ(d_title.height(), 3 * Line_Height());
    QStringList lines = d_title.Shown_Lines();
    ASSERT_EQ(lines.size(), 3);
    for (const QString& line : lines) {
        EXPECT_LE(d_title.fontMetrics().horizontalAdvance(line), WIDTH);
    }
    EXPECT_TRUE(lines.last().endsWith(QChar(0x2026)));
    lines.last().chop(1);
    EXPECT_TRUE(name.startsWith(lines.join("")));
    Expect_Whole_Text_As_Tool_Tip();
}

TEST_F(TTitleLabelTest, A_title_that_was_given_one_line_only_ends_there)
{
    d_title.setText("one two three four five six seven eight nine ten");
    d_title.resize(WIDTH, Line_Height());

    ASSERT_EQ(d_title.Shown_Lines().size(), 1);
    EXPECT_TRUE(d_title.Shown_Lines().first().startsWith("one two"));
    EXPECT_TRUE(d_title.Shown_Lines().first().endsWith(QChar(0x2026)));
    Expect_Whole_Text_As_Tool_Tip();
}

TEST_F(TTitleLabelTest, The_tool_tip_shows_markup_letter_by_letter)
{
    Show_Text(QString("<b>bold</b> & more ").repeated(20));
    Hover();

    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;bold&lt;/b&gt;")) << QToolTip::text().toStdString();
}

TEST_F(TTitleLabelTest, Draws_its_text_in_the_colour_of_the_palette)
{
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::red);
    d_title.setPalette(palette);
    Show_Text(QString(QChar(0x2588)).repeated(4));

    const QImage image = d_title.grab().toImage();
    EXPECT_EQ(image.pixelColor(d_title.fontMetrics().averageCharWidth(), image.height() / 2), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(image.width() - 3, image.height() / 2), QColor(Qt::white));
}

} // namespace
