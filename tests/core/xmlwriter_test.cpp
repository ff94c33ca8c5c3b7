#include "core/xmlwriter.h"

#include "core/xmlpolicy.h"
#include "tests/support/qtprinters.h"

#include <QRandomGenerator>
#include <QTextStream>

#include <gtest/gtest.h>

namespace {

const QByteArray DECLARATION = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

QByteArray Qt_Bytes(const QDomDocument& document, int indentation)
{
    QByteArray bytes;
    QTextStream stream(&bytes);

    document.save(stream, indentation, QDomNode::EncodingFromDocument);
    stream.flush();
    return bytes;
}

QDomDocument New_Document()
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction("xml", XML_DECLARATION));
    return document;
}

// Below the declaration that a new document has: the parser puts other quotes in it.
QDomDocument Parsed(const QByteArray& bytes, bool namespace_processing)
{
    QDomDocument document;
    QString reason;

    EXPECT_TRUE(document.setContent(bytes, namespace_processing, &reason)) << reason.toStdString();
    if (bytes.startsWith(DECLARATION)) {
        document.firstChild().setNodeValue(XML_DECLARATION);
    }
    return document;
}

} // namespace

// Texts and attributes

struct TEscapeCase
{
    const char* name;
    const char* text;
    const char* in_text;
    const char* in_attribute;
};

class TXmlWriter_Escape_Test : public testing::TestWithParam<TEscapeCase>
{
protected:
    TXmlWriter_Escape_Test()
        : d_document(New_Document()), d_root(d_document.createElement("Root")),
          d_text(QString::fromUtf8(GetParam().text))
    {
        d_document.appendChild(d_root);
    }

    const TXmlPolicy d_policy = TXmlPolicy(QDomImplementation::AcceptInvalidChars);
    QDomDocument d_document;
    QDomElement d_root;
    QString d_text;
};

TEST_P(TXmlWriter_Escape_Test, Is_written_in_a_text)
{
    d_root.appendChild(d_document.createTextNode(d_text));

    EXPECT_EQ(Xml_Bytes(d_document, 4), DECLARATION + "<Root>" + GetParam().in_text + "</Root>\n");
    EXPECT_EQ(Xml_Bytes(d_document, 4), Qt_Bytes(d_document, 4));
}

TEST_P(TXmlWriter_Escape_Test, Is_written_in_an_attribute)
{
    d_root.setAttribute("a", d_text);

    EXPECT_EQ(Xml_Bytes(d_document, 4), DECLARATION + "<Root a=\"" + GetParam().in_attribute + "\"/>\n");
    EXPECT_EQ(Xml_Bytes(d_document, 4), Qt_Bytes(d_document, 4));
}

INSTANTIATE_TEST_SUITE_P(
    Characters, TXmlWriter_Escape_Test,
    testing::Values(TEscapeCase{"Nothing", "", "", ""},
                    TEscapeCase{"Plain", "0.5 * L / 3 ;:'", "0.5 * L / 3 ;:'", "0.5 * L / 3 ;:'"},
                    TEscapeCase{"Every_other_character_of_ASCII", "!#$%()*+,-./0123456789=?@AZ[\\]^_`az{|}~",
                                "!#$%()*+,-./0123456789=?@AZ[\\]^_`az{|}~", "!#$%()*+,-./0123456789=?@AZ[\\]^_`az{|}~"},
                    TEscapeCase{"Less", "a<b", "a&lt;b", "a&lt;b"},
                    TEscapeCase{"Ampersand", "&amp;&", "&amp;amp;&amp;", "&amp;amp;&amp;"},
                    TEscapeCase{"Greater", "a>b]>", "a>b]>", "a>b]>"},
                    TEscapeCase{"End_of_a_section", "]]>]]>", "]]&gt;]]&gt;", "]]&gt;]]&gt;"},
                    TEscapeCase{"Quote", "\"a\"", "\"a\"", "&quot;a&quot;"},
                    TEscapeCase{"Line_feed", "a\nb", "a\nb", "a&#xa;b"}, TEscapeCase{"Tab", "a\tb", "a\tb", "a&#x9;b"},
                    TEscapeCase{"Carriage_return", "a\r\nb", "a&#xd;\nb", "a&#xd;&#xa;b"},
                    TEscapeCase{"Beyond_ASCII", "\xC2\xA0ü\xE2\x82\xAC<", "\xC2\xA0ü\xE2\x82\xAC&lt;",
                                "\xC2\xA0ü\xE2\x82\xAC&lt;"},
                    TEscapeCase{"Beyond_U_FFFF", "a\xF0\x9F\x98\x80>", "a\xF0\x9F\x98\x80>", "a\xF0\x9F\x98\x80>"}),
    [](const testing::TestParamInfo<TEscapeCase>& row) { return std::string(row.param.name); });

// Documents

struct TWholeDocumentCase
{
    const char* name;
    QByteArray document;
};

class TXmlWriter_Document_Test : public testing::TestWithParam<TWholeDocumentCase>
{};

TEST_P(TXmlWriter_Document_Test, Is_written_as_Qt_writes_it)
{
    for (const bool namespace_processing : {false, true}) {
        const QDomDocument document = Parsed(GetParam().document, namespace_processing);
        for (const int indentation : {0, 1, 4}) {
            EXPECT_EQ(Xml_Bytes(document, indentation), Qt_Bytes(document, indentation));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Documents, TXmlWriter_Document_Test,
    testing::Values(
        TWholeDocumentCase{"Empty_root", DECLARATION + "<a/>"},
        TWholeDocumentCase{"Nested_elements", DECLARATION + "<a><b><c>1</c><d/></b><b/></a>"},
        TWholeDocumentCase{"Texts_between_elements", DECLARATION + "<a>1<b/>2<c><d/>3</c><e/></a>"},
        TWholeDocumentCase{"Attributes", DECLARATION + "<a b='1' c='2' d='3'><e f='&lt;'/></a>"},
        TWholeDocumentCase{"No_declaration", "<a><b>1</b></a>"},
        TWholeDocumentCase{"Another_encoding", "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xFC'>\xFC</a>"},
        TWholeDocumentCase{"A_declaration_with_more",
                           "<?xml version='1.0' encoding='utf-8' standalone='yes'?><a>1</a>"},
        TWholeDocumentCase{"An_instruction", DECLARATION + "<?b c?><a><?b c?></a>"},
        TWholeDocumentCase{"An_instruction_behind_the_root", DECLARATION + "<a/><?b c?>"},
        TWholeDocumentCase{"A_comment", DECLARATION + "<a><b/><!-- c --></a>"},
        TWholeDocumentCase{"A_comment_in_front_of_the_root", DECLARATION + "<!-- c --><a/>"},
        TWholeDocumentCase{"A_section", DECLARATION + "<a><b><![CDATA[<&>]]></b>1<![CDATA[2]]></a>"},
        TWholeDocumentCase{"A_document_type", DECLARATION + "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"},
        TWholeDocumentCase{"A_namespace", DECLARATION + "<a xmlns='u'><b>1</b></a>"},
        TWholeDocumentCase{"Namespaces", DECLARATION + "<a xmlns='u' xmlns:p='v'><p:b p:c='1'/><d>2</d></a>"},
        TWholeDocumentCase{"An_attribute_in_a_namespace", DECLARATION + "<a xml:lang='en'>1</a>"}),
    [](const testing::TestParamInfo<TWholeDocumentCase>& row) { return std::string(row.param.name); });

TEST(TXmlWriter_Test, Writes_nothing_of_an_empty_document)
{
    EXPECT_EQ(Xml_Bytes(QDomDocument(), 4), Qt_Bytes(QDomDocument(), 4));
    EXPECT_EQ(Xml_Bytes(New_Document(), 4), DECLARATION);
}

TEST(TXmlWriter_Test, Writes_a_text_that_stands_for_the_root_as_Qt_writes_it)
{
    QDomDocument document = New_Document();
    document.appendChild(document.createTextNode("\"text\""));

    EXPECT_EQ(Xml_Bytes(document, 4), DECLARATION + "&quot;text&quot;");
    EXPECT_EQ(Xml_Bytes(document, 4), Qt_Bytes(document, 4));
}

TEST(TXmlWriter_Test, Writes_a_text_of_any_length)
{
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);
    QDomDocument document = New_Document();
    QDomElement root = document.createElement("Root");
    document.appendChild(root);
    for (int index = 0; index < 100; ++index) {
        QDomElement child = document.createElement("Child");
        child.appendChild(document.createTextNode(QString::fromUtf8("\xF0\x9F\x98\x80&").repeated(index * 100)));
        root.appendChild(child);
    }

    EXPECT_EQ(Xml_Bytes(document, 4), Qt_Bytes(document, 4));
}

// Trees at random

namespace {

class TRandomTree
{
public:
    explicit TRandomTree(quint32 seed) : d_random(seed) {}

    QDomDocument Document()
    {
        d_document = New_Document();
        d_document.appendChild(Element(4));
        return d_document;
    }

private:
    QString Text()
    {
        static const QString CHARACTERS = "ab >]]><&\"'\n\r\t;";
        QString text;
        for (int count = d_random.bounded(8); count > 0; --count) {
            text += CHARACTERS.at(d_random.bounded(CHARACTERS.size()));
        }
        return text;
    }

    QDomElement Element(int depth)
    {
        QDomElement element = d_document.createElement(QString("n%1").arg(d_random.bounded(3)));
        for (int count = d_random.bounded(3); count > 0; --count) {
            element.setAttribute(QString("a%1").arg(count), Text());
        }
        for (int count = d_random.bounded(5); count > 0 && depth > 0; --count) {
            if (d_random.bounded(2) == 0) {
                element.appendChild(d_document.createTextNode(Text()));
            } else {
                element.appendChild(Element(depth - 1));
            }
        }
        return element;
    }

    QRandomGenerator d_random;
    QDomDocument d_document;
};

} // namespace

TEST(TXmlWriter_Test, Writes_any_tree_as_Qt_writes_it)
{
    TRandomTree trees(20261122);

    for (int count = 0; count < 500; ++count) {
        const QDomDocument document = trees.Document();
        ASSERT_EQ(Xml_Bytes(document, 0), Qt_Bytes(document, 0));
        ASSERT_EQ(Xml_Bytes(document, 4), Qt_Bytes(document, 4));
    }
}
