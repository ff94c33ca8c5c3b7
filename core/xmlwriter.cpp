#include "core/xmlwriter.h"

#include <QTextStream>

namespace {

// What stands in the file for `character`, behind `before`; empty where it stands for itself.
QLatin1String Reference(QChar character, QStringView before, bool is_attribute)
{
    switch (character.unicode()) {
    case '<':
        return QLatin1String("&lt;");
    case '&':
        return QLatin1String("&amp;");
    case '>':
        return before.endsWith(u"]]") ? QLatin1String("&gt;") : QLatin1String();
    case '\r':
        return QLatin1String("&#xd;");
    case '"':
        return is_attribute ? QLatin1String("&quot;") : QLatin1String();
    case '\n':
        return is_attribute ? QLatin1String("&#xa;") : QLatin1String();
    case '\t':
        return is_attribute ? QLatin1String("&#x9;") : QLatin1String();
    default:
        return QLatin1String();
    }
}

// Whether a character stands for itself wherever it is; not all that do are found.
bool Is_Plain(QChar character)
{
    const ushort code = character.unicode();
    return code > '>' || (code > '&' && code < '<') || code == ' ';
}

bool Is_Element(const QDomNode& node)
{
    return node.isElement() && node.namespaceURI().isNull();
}

// A section is a text, too, but is written otherwise.
bool Is_Plain_Text(const QDomNode& node)
{
    return node.nodeType() == QDomNode::TextNode;
}

// Qt's writer asks the codec about each character on its own, which takes longer than all else, and sends each line to
// the device. This one writes the same.
class TTreeWriter
{
public:
    explicit TTreeWriter(int indentation) : d_indentation(indentation) { d_text.reserve(2 * PIECE_SIZE); }

    QByteArray Bytes()
    {
        Encode();
        return d_bytes;
    }

    // False, and the bytes are of no use, where the document holds anything else than this writer knows.
    bool Write(const QDomDocument& document)
    {
        const QDomNode declaration = document.firstChild();
        const bool is_declared = declaration.nodeType() == QDomNode::ProcessingInstructionNode &&
                                 declaration.nodeName() == "xml" && declaration.nodeValue() == XML_DECLARATION;
        const bool is_only = declaration.nextSibling() == document.lastChild() && document.doctype().name().isEmpty();

        if (!is_declared || !is_only || !document.lastChild().isElement()) {
            return false;
        }
        d_text += QString("<?xml %1?>\n").arg(XML_DECLARATION);
        return Write_Nodes(document.lastChild(), 0);
    }

private:
    bool Write_Nodes(QDomNode node, int depth)
    {
        bool is_after_text = false;
        while (!node.isNull()) {
            const QDomNode next = node.nextSibling();
            if (!Write_Node(node, depth, !is_after_text, !next.isText())) {
                return false;
            }
            if (d_text.size() > PIECE_SIZE) {
                Encode();
            }
            is_after_text = node.isText();
            node = next;
        }
        return true;
    }

    bool Write_Node(const QDomNode& node, int depth, bool begins_line, bool ends_line)
    {
        if (Is_Plain_Text(node)) {
            Write_Escaped(node.nodeValue(), false);
            return true;
        }
        if (!Is_Element(node)) {
            return false;
        }
        if (begins_line) {
            Indent(depth);
        }
        const bool is_known = Write_Element(node, depth);
        if (ends_line) {
            d_text += '\n';
        }
        return is_known;
    }

    bool Write_Element(const QDomNode& node, int depth)
    {
        const QString name = node.nodeName();
        const QDomNode first = node.firstChild();

        d_text += '<';
        d_text += name;
        if (!Write_Attributes(node)) {
            return false;
        }
        if (first.isNull()) {
            d_text += QLatin1String("/>");
            return true;
        }
        d_text += '>';
        if (!first.isText()) {
            d_text += '\n';
        }
        if (!Write_Nodes(first, depth + 1)) {
            return false;
        }
        if (!node.lastChild().isText()) {
            Indent(depth);
        }
        d_text += QLatin1String("</");
        d_text += name;
        d_text += '>';
        return true;
    }

    bool Write_Attributes(const QDomNode& node)
    {
        if (!node.hasAttributes()) {
            return true;
        }
        const QDomNamedNodeMap attributes = node.attributes();
        for (int index = 0; index < attributes.count(); ++index) {
            const QDomNode attribute = attributes.item(index);
            if (!attribute.namespaceURI().isNull()) {
                return false;
            }
            d_text += ' ';
            d_text += attribute.nodeName();
            d_text += QLatin1String("=\"");
            Write_Escaped(attribute.nodeValue(), true);
            d_text += '"';
        }
        return true;
    }

    void Write_Escaped(QStringView text, bool is_attribute)
    {
        qsizetype done = 0;
        for (qsizetype index = 0; index < text.size(); ++index) {
            if (Is_Plain(text[index])) {
                continue;
            }
            const QLatin1String reference = Reference(text[index], text.left(index), is_attribute);
            if (reference.size() > 0) {
                Append(text.mid(done, index - done));
                d_text += reference;
                done = index + 1;
            }
        }
        Append(text.mid(done));
    }

    void Append(QStringView text) { d_text.append(text.data(), static_cast<int>(text.size())); }

    void Indent(int depth) { d_text.resize(d_text.size() + depth * d_indentation, ' '); }

    void Encode()
    {
        d_bytes += d_text.toUtf8();
        d_text.resize(0); // keeps its memory
    }

    static constexpr int PIECE_SIZE = 16 * 1024;

    QByteArray d_bytes;
    QString d_text; // the last piece, not encoded yet
    int d_indentation;
};

QByteArray Qt_Bytes(const QDomDocument& document, int indentation)
{
    QByteArray bytes;
    QTextStream stream(&bytes);

    document.save(stream, indentation, QDomNode::EncodingFromDocument);
    stream.flush();
    return bytes;
}

} // namespace

QByteArray Xml_Bytes(const QDomDocument& document, int indentation)
{
    TTreeWriter writer(indentation);

    return writer.Write(document) ? writer.Bytes() : Qt_Bytes(document, indentation);
}
