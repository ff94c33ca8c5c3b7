#include "core/messagebox.h"

#include "tests/support/guiacts.h"
#include "tests/support/modalanswer.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class TMessageBoxTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        d_box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        d_box.setDefaultButton(QMessageBox::No);
    }

    QLabel* Label(const char* name) const { return Child<QLabel>(&d_box, name); }
    QLabel* Text() const { return Label("qt_msgbox_label"); }
    QLabel* Informative_Text() const { return Label("qt_msgbox_informativelabel"); }

    TMessageBox d_box;
};

TEST_F(TMessageBoxTest, Belongs_to_its_parent)
{
    QWidget parent;
    const TMessageBox box(&parent);

    EXPECT_EQ(box.parentWidget(), &parent);
    EXPECT_TRUE(box.isWindow());
}

TEST_F(TMessageBoxTest, Answers_No_at_once_while_it_is_running)
{
    int second_answer = QMessageBox::NoButton;
    QTimer::singleShot(0, &d_box, [&] {
        second_answer = d_box.exec();
        EXPECT_TRUE(d_box.isVisible());
        d_box.button(QMessageBox::Yes)->click();
    });

    EXPECT_EQ(d_box.exec(), QMessageBox::Yes);

    EXPECT_EQ(second_answer, QMessageBox::No);
}

TEST_F(TMessageBoxTest, Shows_rich_text)
{
    EXPECT_EQ(d_box.textFormat(), Qt::RichText);
}

TEST_F(TMessageBoxTest, Has_no_icons_on_its_buttons_and_button_layout_1)
{
    EXPECT_EQ(d_box.styleSheet(), "dialogbuttonbox-buttons-have-icons: 0;\nbutton-layout: 1;");
}

TEST_F(TMessageBoxTest, Shows_its_text_in_ten_points_and_semibold)
{
    d_box.setText("Data Not Saved");

    EXPECT_EQ(d_box.text(), R"(<span style="font-size:10pt; font-weight:600; color:#000000;" >Data Not Saved</span>)");
}

TEST_F(TMessageBoxTest, Shows_its_informative_text_in_ten_points_and_normal)
{
    d_box.setInformativeText("Current data will be lost.");

    EXPECT_EQ(d_box.informativeText(),
              R"(<span style="font-size:10pt; font-weight:400; color:#000000;" >Current data will be lost.</span>)");
}

TEST_F(TMessageBoxTest, Takes_markup_and_percent_signs_as_they_are)
{
    d_box.setText("<i>100 %1</i>");
    d_box.setInformativeText("%2 & <b>more</b>");

    EXPECT_EQ(d_box.text(), R"(<span style="font-size:10pt; font-weight:600; color:#000000;" ><i>100 %1</i></span>)");
    EXPECT_EQ(d_box.informativeText(),
              R"(<span style="font-size:10pt; font-weight:400; color:#000000;" >%2 & <b>more</b></span>)");
}

struct TLongText
{
    const char* case_name;
    QString text;
};

void PrintTo(const TLongText& row, std::ostream* stream)
{
    *stream << row.case_name;
}

class TMessageBoxWidth : public TMessageBoxTest, public ::testing::WithParamInterface<TLongText>
{
protected:
    // Whether a label shows the whole of its text.
    static bool Fits(const QLabel* label)
    {
        const auto* document = Child<QTextDocument>(label, QString());
        return document->size().height() <= label->height() && document->idealWidth() <= label->width() &&
               label->geometry().right() < label->parentWidget()->width();
    }
};

TEST_P(TMessageBoxWidth, Is_500_pixels_and_the_texts_are_shown_whole)
{
    d_box.setText(GetParam().text);
    d_box.setInformativeText(GetParam().text);
    Show_Active(&d_box);

    EXPECT_EQ(d_box.width(), 500);
    EXPECT_TRUE(Fits(Text()));
    EXPECT_TRUE(Fits(Informative_Text()));
    EXPECT_LT(Informative_Text()->geometry().bottom(), d_box.button(QMessageBox::No)->parentWidget()->y());
}

INSTANTIATE_TEST_SUITE_P(, TMessageBoxWidth,
                         ::testing::Values(TLongText{"Empty", ""}, TLongText{"Short", "File Exists"},
                                           TLongText{"One_line", QString("word ").repeated(12)},
                                           TLongText{"Several_hundred_characters", QString("word ").repeated(150)},
                                           TLongText{"Long_path", QString("/folder_of_budgets").repeated(12)},
                                           TLongText{"Word_without_a_break", QString("x").repeated(300)}),
                         [](const auto& test) { return test.param.case_name; });

TEST_F(TMessageBoxTest, Wraps_a_text_of_several_hundred_characters)
{
    d_box.setText("one line");
    Show_Active(&d_box);
    const int height = d_box.height();

    d_box.setText(QString("word ").repeated(150));
    ASSERT_TRUE(QTest::qWaitFor([this, height]() { return d_box.height() > 3 * height / 2; }));

    EXPECT_EQ(d_box.width(), 500);
    EXPECT_TRUE(Text()->wordWrap());
}

TEST_F(TMessageBoxTest, Stays_500_pixels_wide_when_it_is_resized)
{
    Show_Active(&d_box);

    d_box.setFixedSize(700, 300);
    EXPECT_EQ(d_box.width(), 500);

    d_box.setMinimumWidth(0);
    d_box.resize(100, 300);
    EXPECT_EQ(d_box.width(), 500);
}

TEST_F(TMessageBoxTest, Stays_500_pixels_wide_when_the_details_are_opened)
{
    d_box.setText("text");
    d_box.setDetailedText(QString("A long line of details. ").repeated(50));
    Show_Active(&d_box);
    const int height = d_box.height();

    for (QAbstractButton* button : d_box.buttons()) {
        if (d_box.buttonRole(button) == QMessageBox::ActionRole) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    EXPECT_TRUE(QTest::qWaitFor([this, height]() { return d_box.height() > height; }));
    EXPECT_EQ(d_box.width(), 500);
}

TEST_F(TMessageBoxTest, Exec_is_modal_and_returns_the_button_clicked)
{
    TModalAnswer answer;
    answer.Click(QMessageBox::Yes);
    answer.Click(QMessageBox::No);
    d_box.setText("Delete Components");

    EXPECT_EQ(d_box.exec(), int(QMessageBox::Yes));
    EXPECT_EQ(d_box.exec(), int(QMessageBox::No));
    EXPECT_EQ(answer.Seen(0).text, "Delete Components");
}

TEST_F(TMessageBoxTest, Return_answers_with_the_default_button_and_Escape_with_No)
{
    TModalAnswer answer;
    answer.Press(Qt::Key_Return);
    answer.Press(Qt::Key_Escape);
    d_box.setDefaultButton(QMessageBox::Yes);

    EXPECT_EQ(d_box.exec(), int(QMessageBox::Yes));
    EXPECT_EQ(d_box.exec(), int(QMessageBox::No));
}

TEST_F(TMessageBoxTest, Send_Key_answers_the_box_as_the_key_would)
{
    d_box.setDefaultButton(QMessageBox::Yes);
    d_box.Send_Key(Qt::Key_Return);
    EXPECT_EQ(d_box.exec(), int(QMessageBox::Yes));

    d_box.Send_Key(Qt::Key_Escape);
    EXPECT_EQ(d_box.exec(), int(QMessageBox::No));
}

// Writes down the key events that an object receives.
class TKeyRecorder : public QObject
{
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) {
            return false;
        }
        const auto* key = static_cast<QKeyEvent*>(event);
        d_events += QString("%1 %2 %3 '%4'")
                        .arg(event->type() == QEvent::KeyPress ? "press" : "release")
                        .arg(key->key())
                        .arg(int(key->modifiers()))
                        .arg(key->text());
        return true;
    }

    QStringList d_events;
};

TEST_F(TMessageBoxTest, Send_Key_posts_a_press_and_a_release_without_modifiers_and_text)
{
    TKeyRecorder recorder;
    d_box.installEventFilter(&recorder);

    d_box.Send_Key(Qt::Key_Y);
    EXPECT_EQ(recorder.d_events, QStringList());

    QCoreApplication::processEvents();
    EXPECT_EQ(recorder.d_events, QStringList({"press 89 0 ''", "release 89 0 ''"}));
}

class TMessageBoxInADarkTheme : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QPalette dark(QColor(40, 40, 40), QColor(30, 30, 30));
        dark.setColor(QPalette::Base, QColor(20, 20, 20));
        dark.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(dark);
    }

    void TearDown() override { QApplication::setPalette(d_plain); }

    const QPalette d_plain = QApplication::palette();
};

TEST_F(TMessageBoxInADarkTheme, Has_a_light_ground_under_its_black_texts)
{
    TMessageBox box;
    box.setText("Data Not Saved");
    Show_Active(&box);

    EXPECT_GT(box.grab().toImage().pixelColor(3, 3).lightnessF(), 0.9);
}

TEST_F(TMessageBoxInADarkTheme, Has_dark_texts_on_light_buttons_and_details)
{
    TMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDetailedText("details");
    Show_Active(&box);

    const QPalette button = box.button(QMessageBox::Yes)->palette();
    EXPECT_GT(button.color(QPalette::Button).lightnessF(), 0.9);
    EXPECT_EQ(button.color(QPalette::ButtonText), QColor(Qt::black));

    const QPalette details = box.findChild<QTextEdit*>()->palette();
    EXPECT_GT(details.color(QPalette::Base).lightnessF(), 0.9);
    EXPECT_EQ(details.color(QPalette::Text), QColor(Qt::black));
}

TEST_F(TMessageBoxInADarkTheme, Keeps_its_palette_when_the_theme_changes)
{
    TMessageBox box;
    Show_Active(&box);
    QApplication::setPalette(d_plain);
    SetUp();

    EXPECT_GT(box.palette().color(QPalette::Window).lightnessF(), 0.9);
    EXPECT_GT(box.buttons().constFirst()->palette().color(QPalette::Button).lightnessF(), 0.9);
}

} // namespace
