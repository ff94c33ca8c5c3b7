#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QDomNode>
#include <QSet>
#include <QString>

/// What the XML layer throws, by value.
class TXmlFileException
{
public:
    enum TExceptionType
    {
        File_Access = 0, ///< a file cannot be opened
        Xml_Content      ///< all else: the content is wrong, or cannot be written
    };

    TXmlFileException(const QString& text, TExceptionType exception_type) : message(text), type(exception_type) {}

    const QString& Message() const { return message; }
    TExceptionType Type() const { return type; }

    QString message; ///< complete, for the user: "ERR:  ..."
    TExceptionType type;
};

/// One XML document with a known root element and a file version, made for one load or one save. Every failure is a
/// TXmlFileException; a null pointer is a programming error. An operation with the flag `optional` returns a null node
/// or an empty text for what is missing where the flag is true, and throws where it is false.
class TXmlFile
{
public:
    /// An empty document. Sets Qt's process-wide policy for illegal XML data to "return a null node".
    TXmlFile();
    ~TXmlFile();

    Q_DISABLE_COPY(TXmlFile)

    /// Names the file for Open() and Write_File().
    void Set_File_Name(const QString& file_name) { d_file_name = file_name; }
    /// The root element, where reading and writing begin; owned by this object.
    QDomElement* Root_Element() { return &d_root_element; }
    /// The root element's name that the last opened document had to have.
    const QString& Identification() const { return d_identification; }
    /// The name in the document type declaration of the last opened document, empty if it has none.
    const QString& Document_Type() const { return d_document_type; }

    // Opening

    /// Reads the named file, whose root element must be called `identification`. `*file_version` receives its version;
    /// with a null pointer the file needs none. Folders, pipes, devices and files that no budget could be are refused
    /// (see Xml_Parse).
    void Open(const QString& identification, int* file_version, bool namespace_processing);
    /// The same for bytes in memory.
    void Open_Data(const QByteArray& data, const QString& identification, int* file_version, bool namespace_processing);

    // Navigation

    /// The first child element called `name`.
    QDomElement Get_Node(const QDomElement* node, const QString& name, bool optional) const;
    QDomElement Get_Node(const QDomNode* node, const QString& name, bool optional) const;
    /// The next sibling element called `name`.
    QDomElement Get_Sibling_Node(const QDomElement* current_node, const QString& name, bool optional) const;
    /// The first child of any kind.
    QDomNode Get_First_Node(const QDomElement* parent, bool optional) const;
    QDomNode Get_First_Node(const QDomNode* parent, bool optional) const;
    /// The next sibling of any kind.
    QDomNode Get_Sibling_Node(const QDomNode* current_node, bool optional) const;

    // Reading

    QString Read_Attribute(const QDomElement* node, const QString& name, bool optional) const;
    QString Read_Attribute(const QDomNode* node, const QString& name, bool optional) const;
    /// The text that is the node's first child. An empty element has no text, nor has one that begins with anything
    /// else.
    QString Read_Text_Node(const QDomElement* node, bool optional) const;
    QString Read_Text_Node(const QDomNode* node, bool optional) const;

    // Writing

    /// Appends a new element to `parent`.
    QDomElement Create_Node(QDomElement* parent, const QString& name);
    /// Appends a text; a number is written with `precision` decimals.
    void Write_Text_Node(QDomElement* node, const QString& text);
    void Write_Text_Node(QDomElement* node, const double& value, int precision);
    void Write_Text_Node(QDomElement* node, int value);
    /// Sets or replaces an attribute.
    void Write_Attribute(QDomElement* node, const QString& name, const QString& value);
    void Write_Attribute(QDomElement* node, const QString& name, const double& value, int precision);
    void Write_Attribute(QDomElement* node, const QString& name, int value);

    /// Empties the document.
    void Clear();
    /// Starts a document with an XML declaration and a root element that carries the version.
    void Reset(const QString& identification, int file_version);
    /// Starts a document of the document type `doctype`, without an XML declaration.
    void Reset(const QString& doctype, const QString& identification, int file_version);

    /// Replaces the named file by the document: indented by 4 blanks per level, or `compact`, on one line (line breaks
    /// inside texts are dropped as well). On failure the old file is still there; only a document beyond a limit of
    /// Open() is written all the same, and the failure says so.
    void Write_File(bool compact);
    /// The same into `data`.
    void Write_Data(QByteArray* data, bool compact);

private:
    void Parse(const QByteArray& data, const QString& message, bool namespace_processing);
    void Check_Root(const QString& identification, int* file_version);
    void Append_Root(const QString& identification, int file_version);
    QDomElement New_Element(const QString& name);
    QByteArray Document_Bytes(bool compact) const;

    QDomDocument d_document;
    QDomElement d_root_element;
    QString d_file_name;
    QString d_identification;
    QString d_document_type;
    QSet<QString> d_legal_names; // of the elements created so far
};
