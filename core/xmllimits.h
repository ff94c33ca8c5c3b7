#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

#include <vector>

/// Where the elements of `text` first have so many attributes that not even reading them is quick; -1 if they never do.
/// 0 if it is the document type that declares so many.
int Xml_Find_Excess_Of_Attributes(const QString& text);

/// Whether `bytes` are certain to stay within the limits if they are a budget's: elements that hold either elements or
/// one text and stand no deeper than 50 levels, and hardly any attributes. Quicker than counting them.
bool Xml_Is_Surely_Small(const QByteArray& bytes);

/// What a stream reader has come across so far.
struct TXmlCounts
{
    std::vector<qint64> namespaces; ///< their weight in each open element
    qint64 depth = 0;
    qint64 elements = 0;
    qint64 entities = 0;
    qint64 nesting = 0;
    qint64 declared_attributes = 0;
    qint64 attribute_pairs = 0; ///< those of the elements in entities come again with each reference
    qint64 pairs = 0;
    qint64 expansion = 0; ///< beyond the document's own length
    qint64 cost = 0;
    bool is_plain = true; ///< neither namespaces nor a document type
};

/// What keeps any document quick to read and small in memory. Counts one token of a stream reader after the other.
class TXmlLimits
{
public:
    explicit TXmlLimits(const QString& text);

    /// Bounds how far one reference expands in `reader`, depending on where it is.
    void Bound_Expansion(QXmlStreamReader* reader) const;

    /// Counts the token at which `reader` is. Returns what there is too much of by now; empty if nothing.
    QString Count(const QXmlStreamReader& reader);

    /// Whether what was counted has neither namespaces nor a document type.
    bool Is_Plain() const;

private:
    int d_declaration_share; ///< characters to which one reference may expand inside the document type
    int d_content_share;     ///< and behind it
    TXmlCounts d_counts;
};
