#include "core/xmlchildren.h"
#include "tests/support/qtprinters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDomDocument>

namespace {

class TXmlChildren_Test : public ::testing::Test
{
protected:
    TXmlChildren_Test()
    {
        d_document.setContent(QByteArray("<r>text<a>1</a><!--b--><b>2<d>inner</d></b><a>3</a><c>4</c></r>"));
    }

    QDomElement Root() const { return d_document.documentElement(); }

    QDomDocument d_document;
};

} // namespace

TEST_F(TXmlChildren_Test, Finds_elements_in_their_order)
{
    TXmlChildren children(Root());

    EXPECT_EQ(children.Find("a").text(), "1");
    EXPECT_EQ(children.Find("b").text(), "2inner");
    EXPECT_EQ(children.Find("c").text(), "4");
}

TEST_F(TXmlChildren_Test, Finds_elements_in_any_order_and_again)
{
    TXmlChildren children(Root());

    EXPECT_EQ(children.Find("c").text(), "4");
    EXPECT_EQ(children.Find("b").text(), "2inner");
    EXPECT_EQ(children.Find("c").text(), "4");
}

TEST_F(TXmlChildren_Test, Finds_the_first_of_several_whichever_were_passed)
{
    TXmlChildren children(Root());

    EXPECT_EQ(children.Find("a").text(), "1");
    EXPECT_EQ(children.Find("c").text(), "4");
    EXPECT_EQ(children.Find("a").text(), "1");
}

TEST_F(TXmlChildren_Test, Finds_nothing_of_another_name_or_deeper_and_all_others_afterwards)
{
    TXmlChildren children(Root());

    EXPECT_TRUE(children.Find("A").isNull());
    EXPECT_TRUE(children.Find("d").isNull());
    EXPECT_TRUE(children.Find("").isNull());
    EXPECT_EQ(children.Find("b").text(), "2inner");
}

TEST_F(TXmlChildren_Test, Finds_nothing_in_an_element_without_elements)
{
    TXmlChildren children(Root().firstChildElement("c"));

    EXPECT_TRUE(children.Find("a").isNull());
}
