#include "core/xmlfile.h"

#include "core/xmlparser.h"
#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"

#include <QDir>
#include <QDomImplementation>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextCodec>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// What an operation throws, kind and message in one text; "nothing" if it throws nothing.
QString Thrown(const std::function<void()>& act)
{
    try {
        act();
    } catch (const TXmlFileException& exception) {
        return (exception.type == TXmlFileException::File_Access ? "access: " : "content: ") + exception.message;
    }
    return "nothing";
}

QString Opened(const QByteArray& data, bool namespace_processing = true)
{
    TXmlFile file;
    return Thrown([&] { file.Open_Data(data, "Root", nullptr, namespace_processing); });
}

void Write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray Content(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QByteArray Repeated(const QByteArray& text, int count)
{
    QByteArray result;
    result.reserve(text.size() * count);
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// Halves of characters beyond U+FFFF stay as they are.
QByteArray In_UTF_16(const QString& text)
{
    return QTextCodec::codecForName("UTF-16")->fromUnicode(text);
}

QByteArray Nested(int depth)
{
    return "<Root>" + Repeated("<a>", depth - 1) + Repeated("</a>", depth - 1) + "</Root>";
}

QString Parse_Error(const QString& reason, int line, int column)
{
    return QString("content: ERR:  Reference data XML parse error at line %1 column %2: %3")
        .arg(reason, QString::number(line), QString::number(column));
}

const QDomNode NULL_NODE;
const QDomElement NULL_ELEMENT;

} // namespace

// Opening

class TXmlFile_Open_Test : public testing::Test
{
protected:
    TXmlFile_Open_Test() { QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777)); }

    QString Path(const QString& name) const { return d_folder.filePath(name); }

    QString Open(const QString& name, const QString& identification = "Norvexa_Data")
    {
        d_file.Set_File_Name(name);
        return Thrown([&] { d_file.Open(identification, &d_version, true); });
    }

    QTemporaryDir d_folder;
    TXmlFile d_file;
    int d_version = -1;
};

TEST_F(TXmlFile_Open_Test, Reads_the_root_element_and_the_version)
{
    Write(Path("file"), "<!DOCTYPE Kind><Norvexa_Data File_Version='12'><Leaf>text</Leaf></Norvexa_Data>");

    EXPECT_EQ(Open(Path("file")), "nothing");
    EXPECT_EQ(d_version, 12);
    EXPECT_EQ(d_file.Root_Element()->tagName(), "Norvexa_Data");
    EXPECT_EQ(d_file.Identification(), "Norvexa_Data");
    EXPECT_EQ(d_file.Document_Type(), "Kind");
    const QDomElement leaf = d_file.Get_Node(d_file.Root_Element(), "Leaf", false);
    EXPECT_EQ(d_file.Read_Text_Node(&leaf, false), "text");
}

TEST_F(TXmlFile_Open_Test, Has_no_document_type_where_the_document_has_none)
{
    Write(Path("file"), "<Norvexa_Data File_Version='1'/>");

    EXPECT_EQ(Open(Path("file")), "nothing");
    EXPECT_EQ(d_file.Document_Type(), "");
}

TEST_F(TXmlFile_Open_Test, Reads_a_file_with_the_line_ends_of_other_systems)
{
    Write(Path("file"), "<Norvexa_Data File_Version='3'>\r\n<Leaf>a\r\nb</Leaf>\r\n</Norvexa_Data>\r\n");

    EXPECT_EQ(Open(Path("file")), "nothing");
    const QDomElement leaf = d_file.Get_Node(d_file.Root_Element(), "Leaf", false);
    EXPECT_EQ(d_file.Read_Text_Node(&leaf, false), "a\nb");
}

TEST_F(TXmlFile_Open_Test, Refuses_a_missing_file)
{
    EXPECT_EQ(Open(Path("%2 missing")), "access: ERR:  Cannot open file '" + Path("%2 missing") + "' for reading.");
}

TEST_F(TXmlFile_Open_Test, Refuses_a_file_that_may_not_be_read)
{
    Write(Path("file"), "<Norvexa_Data File_Version='3'/>");
    QFile::setPermissions(Path("file"), QFile::Permissions());

    EXPECT_EQ(As_Plain_User([&] { return Open(Path("file")); }),
              "access: ERR:  Cannot open file '" + Path("file") + "' for reading.");
}

TEST_F(TXmlFile_Open_Test, Refuses_a_folder)
{
    EXPECT_EQ(Open(d_folder.path()),
              "access: ERR:  Cannot open file: '" + d_folder.path() + "'.  Reason: not a regular file");
}

TEST_F(TXmlFile_Open_Test, Refuses_a_pipe_without_waiting_for_it)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(Path("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(Path("pipe"), Path("link")));

    EXPECT_EQ(Open(Path("pipe")),
              "access: ERR:  Cannot open file: '" + Path("pipe") + "'.  Reason: not a regular file");
    EXPECT_EQ(Open(Path("link")),
              "access: ERR:  Cannot open file: '" + Path("link") + "'.  Reason: not a regular file");
}

TEST_F(TXmlFile_Open_Test, Reports_a_file_that_cannot_be_opened)
{
    Write(Path("file"), "<Norvexa_Data File_Version='3'/>");
    const auto open_without_descriptors = [&]() -> QString {
        struct rlimit limit = {};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = 0;
        return setrlimit(RLIMIT_NOFILE, &limit) == 0 ? Open(Path("file")) : QString("no limit set");
    };

    EXPECT_EQ(In_Child(open_without_descriptors),
              "access: ERR:  Cannot open file: '" + Path("file") + "'.  Reason: Too many open files");
}

TEST_F(TXmlFile_Open_Test, Reports_a_file_that_cannot_be_read)
{
    // A regular file whose first byte is never there.
    const QString name = "/proc/self/mem";

    EXPECT_EQ(Open(name), "access: ERR:  Cannot open file: '" + name + "'.  Reason: Input/output error");
}

TEST_F(TXmlFile_Open_Test, Follows_a_link)
{
    Write(Path("file"), "<Norvexa_Data File_Version='3'/>");
    ASSERT_TRUE(QFile::link("file", Path("link")));

    EXPECT_EQ(Open(Path("link")), "nothing");
}

TEST_F(TXmlFile_Open_Test, Reports_a_malformed_file_with_the_reason_after_the_line)
{
    Write(Path("file"), "<Norvexa_Data>\n  <a>\n</Norvexa_Data>");

    const QString thrown = Open(Path("file"));
    EXPECT_TRUE(
        QRegularExpression("^content: ERR:  Reference file XML parse error at line .*mismatch.* column 3: \\d+$")
            .match(thrown)
            .hasMatch())
        << thrown.toStdString();
}

TEST_F(TXmlFile_Open_Test, Refuses_another_root_element)
{
    Write(Path("file"), "<Other File_Version='3'/>");

    EXPECT_EQ(Open(Path("file")), "content: ERR:  Identification 'Norvexa_Data' does not match 'Other'");
}

TEST_F(TXmlFile_Open_Test, Keeps_the_parsed_document_that_it_refuses)
{
    Write(Path("file"), "<!DOCTYPE Kind><Other File_Version='3'><Leaf/></Other>");

    Open(Path("file"));
    EXPECT_EQ(d_file.Root_Element()->tagName(), "Other");
    EXPECT_EQ(d_file.Get_Node(d_file.Root_Element(), "Leaf", false).tagName(), "Leaf");
    EXPECT_EQ(d_version, -1);
    EXPECT_EQ(d_file.Identification(), "");
    EXPECT_EQ(d_file.Document_Type(), "");
}

TEST_F(TXmlFile_Open_Test, Fills_in_names_that_look_like_place_holders)
{
    Write(Path("file"), "<Other File_Version='3'/>");

    EXPECT_EQ(Open(Path("file"), "%2"), "content: ERR:  Identification '%2' does not match 'Other'");
}

TEST_F(TXmlFile_Open_Test, Tells_names_by_case)
{
    Write(Path("file"), "<norvexa_data File_Version='3'/>");

    EXPECT_EQ(Open(Path("file")), "content: ERR:  Identification 'Norvexa_Data' does not match 'norvexa_data'");
}

TEST_F(TXmlFile_Open_Test, Requires_a_version_only_where_it_is_asked_for)
{
    Write(Path("file"), "<Norvexa_Data/>");

    EXPECT_EQ(Open(Path("file")), "content: ERR:  The 'File_Version' attribute is missing.");
    EXPECT_EQ(Thrown([&] { d_file.Open("Norvexa_Data", nullptr, true); }), "nothing");
}

TEST_F(TXmlFile_Open_Test, Knows_the_document_that_lacks_a_version)
{
    Write(Path("file"), "<!DOCTYPE Kind><Norvexa_Data/>");

    EXPECT_EQ(Open(Path("file")), "content: ERR:  The 'File_Version' attribute is missing.");
    EXPECT_EQ(d_file.Document_Type(), "Kind");
    EXPECT_EQ(d_file.Identification(), "Norvexa_Data");
}

TEST_F(TXmlFile_Open_Test, Reads_a_version_that_is_no_number_as_0)
{
    Write(Path("file"), "<Norvexa_Data File_Version='three'/>");

    EXPECT_EQ(Open(Path("file")), "nothing");
    EXPECT_EQ(d_version, 0);
}

TEST_F(TXmlFile_Open_Test, Reads_a_version_in_base_10)
{
    const std::pair<const char*, int> versions[] = {{"0x3", 0}, {"0b11", 0}, {"a", 0}, {"010", 10}};
    for (const auto& [text, version] : versions) {
        Write(Path("file"), QByteArray("<Norvexa_Data File_Version='") + text + "'/>");

        EXPECT_EQ(Open(Path("file")), "nothing");
        EXPECT_EQ(d_version, version) << text;
    }
}

TEST_F(TXmlFile_Open_Test, Refuses_a_file_above_64_MB)
{
    Write(Path("file"), "<Norvexa_Data File_Version='3'/>");
    ASSERT_TRUE(QFile::resize(Path("file"), 64LL * 1024 * 1024 + 1));

    EXPECT_EQ(Open(Path("file")),
              "content: ERR:  Reference file XML parse error at line larger than 64 MB column 1: 1");
}

TEST_F(TXmlFile_Open_Test, Refuses_a_file_of_3_GB_by_its_size)
{
    // So much cannot be read at once, and it takes no room on the disk.
    Write(Path("file"), "<Norvexa_Data File_Version='3'/>");
    ASSERT_TRUE(QFile::resize(Path("file"), 3LL * 1024 * 1024 * 1024));

    EXPECT_EQ(Open(Path("file")),
              "content: ERR:  Reference file XML parse error at line larger than 64 MB column 1: 1");
}

TEST_F(TXmlFile_Open_Test, Refuses_an_empty_file_and_binary_data)
{
    const QString message = "content: ERR:  Reference file XML parse error at line ";
    QByteArray binary;
    for (int i = 0; i < 4096; ++i) {
        binary += static_cast<char>(i * 7919 % 256);
    }

    Write(Path("empty"), "");
    EXPECT_TRUE(Open(Path("empty")).startsWith(message));
    Write(Path("binary"), binary);
    EXPECT_TRUE(Open(Path("binary")).startsWith(message));
}

TEST(TXmlFile_Open_Data_Test, Reads_the_same_from_memory)
{
    TXmlFile file;
    int version = 0;

    file.Open_Data("<Root File_Version='7'/>", "Root", &version, true);
    EXPECT_EQ(version, 7);
    EXPECT_EQ(Opened("<Root/>"), "nothing");
    EXPECT_EQ(Opened("<Other/>"), "content: ERR:  Identification 'Root' does not match 'Other'");
    EXPECT_EQ(Thrown([&] { file.Open_Data("<Root/>", "Root", &version, true); }),
              "content: ERR:  The 'File_Version' attribute is missing.");
}

TEST(TXmlFile_Open_Data_Test, Reports_malformed_data_in_the_words_of_the_document_parser)
{
    for (const QByteArray data :
         {"<Root><a></Root>", "<Root>", "", "no xml", "<Root>\n <a b=></a></Root>", "<Root/><Root/>"}) {
        QString reason;
        int line = 0;
        int column = 0;
        ASSERT_FALSE(QDomDocument().setContent(data, true, &reason, &line, &column));

        EXPECT_EQ(Opened(data), Parse_Error(reason, line, column)) << data.constData();
    }
}

// Untrusted documents

struct TDocumentCase
{
    const char* name;
    std::function<QByteArray()> document; // made only for its own test
    QString thrown;
};

void PrintTo(const TDocumentCase& document_case, std::ostream* stream)
{
    *stream << document_case.name;
}

class TXmlFile_Untrusted_Test : public testing::TestWithParam<TDocumentCase>
{};

TEST_P(TXmlFile_Untrusted_Test, Is_read_or_refused)
{
    const QString thrown = Opened(GetParam().document());

    if (GetParam().thrown.endsWith('*')) {
        EXPECT_TRUE(thrown.startsWith(GetParam().thrown.left(GetParam().thrown.size() - 1))) << thrown.toStdString();
    } else {
        EXPECT_EQ(thrown, GetParam().thrown);
    }
}

const QString PARSE_ERROR = "content: ERR:  Reference data XML parse error at line *";

QString Starts(const QString& reason)
{
    return "content: ERR:  Reference data XML parse error at line " + reason + " column *";
}

const QString TOO_MUCH = Starts("too many elements, attributes, texts and references");

QByteArray With_Entities(int count)
{
    QByteArray document = "<!DOCTYPE Root [";
    for (int i = 0; i < count; ++i) {
        document += "<!ENTITY e" + QByteArray::number(i) + " 'x'>";
    }
    return document + "]><Root>&e0;</Root>";
}

/// The declaration, 64 of others and the reference to the first of them.
QByteArray With_Entity(const QByteArray& declaration)
{
    return With_Entities(64).replace("<!ENTITY e0 ", declaration + "<!ENTITY e0 ");
}

QByteArray Billion_Laughs()
{
    QByteArray document = "<!DOCTYPE Root [<!ENTITY e0 'laugh'>";
    for (int i = 1; i < 10; ++i) {
        const QByteArray former = "&e" + QByteArray::number(i - 1) + ";";
        document += "<!ENTITY e" + QByteArray::number(i) + " '" + Repeated(former, 10) + "'>";
    }
    return document + "]><Root>&e9;</Root>";
}

QByteArray Parameter_Laughs()
{
    QByteArray document = "<!DOCTYPE Root [<!ENTITY % e0 ' '>";
    for (int i = 1; i < 10; ++i) {
        const QByteArray former = "&#37;e" + QByteArray::number(i - 1) + ";";
        document += "<!ENTITY % e" + QByteArray::number(i) + " '" + Repeated(former, 10) + "'>";
    }
    return document + "%e9;]><Root/>";
}

QByteArray Quadratic_Blowup(const QByteArray& begin, const QByteArray& end)
{
    return "<!DOCTYPE Root [<!ENTITY e '" + QByteArray(3000, 'x') + "'>]>" + begin + Repeated("&e;", 200'000) + end;
}

QByteArray With_Content_Model(int depth)
{
    return "<!DOCTYPE Root [<!ELEMENT a " + Repeated("(", depth) + "b" + Repeated(")", depth) + ">]><Root/>";
}

QByteArray With_Declared_Attributes(int count, int elements)
{
    QByteArray document = "<!DOCTYPE Root [<!ATTLIST a";
    for (int i = 0; i < count; ++i) {
        document += " b" + QByteArray::number(i) + " CDATA ''";
    }
    return document + ">]><Root>" + Repeated("<a/>", elements) + "</Root>";
}

QByteArray With_Declarations_Of_Size(int size)
{
    const QByteArray begin = "<!ATTLIST a b CDATA ''";
    const QByteArray end = ">]>";
    return "<!DOCTYPE Root [" + begin + QByteArray(size - begin.size() - end.size(), ' ') + end + "<Root/>";
}

// Attributes that are declared where only the expanded text shows it.
QByteArray With_Hidden_Attributes(int references)
{
    return "<!DOCTYPE Root [<!ENTITY % p \"" + Repeated("&#60;!ATTLIST a b ID #IMPLIED>", 100) + "\">" +
           Repeated("%p;", references) + "]><Root/>";
}

QByteArray With_Namespaces(int count, const QByteArray& element, int elements)
{
    QByteArray document = "<Root";
    for (int i = 0; i < count; ++i) {
        document += " xmlns:p" + QByteArray::number(i) + "='u'";
    }
    return document + ">" + Repeated(element, elements) + "</Root>";
}

// Each element compares the addresses of its two attributes.
QByteArray With_Long_Namespaces(int length)
{
    const QByteArray address(length, 'u');
    return "<Root xmlns:p='" + address + "1' xmlns:q='" + address + "2'>" + Repeated("<a p:b='' q:b=''/>", 1'000) +
           "</Root>";
}

QByteArray With_Attributes(int count)
{
    QByteArray document = "<Root";
    for (int i = 0; i < count; ++i) {
        document += " a" + QByteArray::number(i) + "=''";
    }
    return document + "/>";
}

QByteArray With_Attributes_In_Entity(int count, const QByteArray& equals_sign, int references)
{
    return "<!DOCTYPE Root [<!ENTITY e \"" + With_Attributes(count).replace("=", equals_sign) + "\">]>\n<Root>" +
           Repeated("&e;", references) + "</Root>";
}

// An element with too many attributes behind what must not hide it.
QByteArray With_Attributes_Behind(const QByteArray& begin, const QByteArray& end)
{
    return begin + "\n" + With_Attributes(20'000) + "\n" + end;
}

QByteArray Declarations()
{
    return "<!DOCTYPE Root [<!ENTITY % p ''>" + Repeated("<!ELEMENT a ANY>%p;", 1'000) + "]>";
}

// A thousand times the part, which costs as much as told. A comment takes the cost of the whole to what is read at
// most, and beyond by the excess.
QByteArray Of_Cost(const QByteArray& prolog, const QByteArray& part, int cost, int excess)
{
    constexpr int MAXIMUM = 130'000'000;
    constexpr int PARTS = 1'000;
    constexpr int ELEMENT = 36;
    constexpr int COMMENT = 28;
    constexpr int DECLARATION = 28;
    constexpr int REFERENCE = 35;
    const int own_size = QByteArray("<Root><!----></Root>").size();
    const int entities = prolog.contains("<!ENTITY") ? 48'933'542 : 0;
    const int declaring = 2 * QByteArray(prolog).replace("%p;", "").size();
    const int own_cost = own_size + entities + declaring + ELEMENT + COMMENT + DECLARATION * prolog.count('<') +
                         REFERENCE * prolog.count('%');
    const int used = prolog.size() + own_cost + PARTS * cost;
    const int free = MAXIMUM - used + excess;
    const QByteArray filling = QByteArray(free / (REFERENCE + 1), '&') + QByteArray(free % (REFERENCE + 1), ' ');

    return prolog + "<Root><!--" + filling + "-->" + Repeated(part, PARTS) + "</Root>";
}

// What a part of a document costs beside others, which are declared in front of it.
struct TCostCase
{
    const char* name;
    QByteArray prolog;
    QByteArray part;
    int cost;
};

void PrintTo(const TCostCase& cost_case, std::ostream* stream)
{
    *stream << cost_case.name;
}

class TXmlFile_Cost_Test : public testing::TestWithParam<TCostCase>
{};

TEST_P(TXmlFile_Cost_Test, Is_read_up_to_the_limit_and_refused_above)
{
    const TCostCase& part = GetParam();
    const QString thrown = Opened(Of_Cost(part.prolog, part.part, part.cost, 1));

    EXPECT_EQ(Opened(Of_Cost(part.prolog, part.part, part.cost, 0)), "nothing");
    EXPECT_EQ(thrown.left(TOO_MUCH.size() - 1) + "*", TOO_MUCH);
}

INSTANTIATE_TEST_SUITE_P(
    Parts, TXmlFile_Cost_Test,
    testing::Values(
        TCostCase{"Elements", QByteArray(), "<a/>", 40}, TCostCase{"Attributes", QByteArray(), "<a b=''/>", 125},
        TCostCase{"Texts", QByteArray(), "<a>b</a>", 94}, TCostCase{"Blanks", QByteArray(), " \n\t<a/>", 43},
        TCostCase{"Sections", QByteArray(), "<![CDATA[ ]]>", 63}, TCostCase{"Comments", QByteArray(), "<!---->", 35},
        TCostCase{"Instructions", QByteArray(), "<?a?>", 33},
        TCostCase{"References", QByteArray(), "<a b='&#9;'/>", 164},
        TCostCase{"Nested_elements", QByteArray(), "<a><b><c/></b></a>", 127},
        TCostCase{"Namespaces", QByteArray(), "<a xmlns:p='u'><p:b/></a>", 139},
        TCostCase{"Declarations", Declarations(), "<a/>", 40},
        TCostCase{"Elements_below_declared_attributes", "<!DOCTYPE Root [<!ATTLIST b c ID ''>]>", "<a/>", 41},
        TCostCase{"Elements_with_attributes_below_declared_ones", "<!DOCTYPE Root [<!ATTLIST b c ID ''>]>",
                  "<a d='' e=''/>", 212},
        TCostCase{"Elements_with_an_attribute_by_default", "<!DOCTYPE Root [<!ATTLIST a b ID 'c'>]>", "<a/>", 121}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Documents, TXmlFile_Untrusted_Test,
    testing::Values(
        TDocumentCase{"Nested_256_deep", [] { return Nested(256); }, "nothing"},
        TDocumentCase{"Nested_257_deep", [] { return Nested(257); }, Starts("elements nested deeper than 256 levels")},
        TDocumentCase{"Nested_100000_deep", [] { return Nested(100'000); },
                      Starts("elements nested deeper than 256 levels")},
        TDocumentCase{"Nested_without_an_end", [] { return "<Root>" + Repeated("<a>", 100'000); },
                      Starts("elements nested deeper than 256 levels")},
        TDocumentCase{"Two_million_elements", [] { return "<Root>" + Repeated("<a/>", 1'999'999) + "</Root>"; },
                      "nothing"},
        TDocumentCase{"One_element_more", [] { return "<Root>" + Repeated("<a/>", 2'000'000) + "</Root>"; },
                      Starts("more than 2000000 elements")},
        TDocumentCase{"Larger_than_64_MB", [] { return "<Root>" + QByteArray(64 * 1024 * 1024, ' ') + "</Root>"; },
                      Parse_Error("larger than 64 MB", 1, 1)},
        TDocumentCase{"Entities_64", [] { return With_Entities(64); }, "nothing"},
        TDocumentCase{"Entities_65", [] { return With_Entities(65); }, Starts("more than 64 entity declarations")},
        TDocumentCase{"Entities_64_and_an_empty_one", [] { return With_Entity("<!ENTITY e ''>"); },
                      Starts("more than 64 entity declarations")},
        TDocumentCase{"Entities_64_and_a_parameter", [] { return With_Entity("<!ENTITY % p 'x'>"); },
                      Starts("more than 64 entity declarations")},
        TDocumentCase{"Entities_64_and_an_external_one", [] { return With_Entity("<!ENTITY e SYSTEM 'x'>"); },
                      Starts("more than 64 entity declarations")},
        TDocumentCase{"Entities_64_and_an_external_parameter", [] { return With_Entity("<!ENTITY % p SYSTEM 'x'>"); },
                      Starts("more than 64 entity declarations")},
        TDocumentCase{"Entities_64_and_one_that_is_not_parsed",
                      [] { return With_Entity("<!NOTATION n SYSTEM 'x'><!ENTITY e SYSTEM 'x' NDATA n>"); },
                      Starts("more than 64 entity declarations")},
        TDocumentCase{"Billion_laughs", [] { return Billion_Laughs(); }, PARSE_ERROR},
        TDocumentCase{"Billion_laughs_in_parameter_entities", [] { return Parameter_Laughs(); }, PARSE_ERROR},
        TDocumentCase{"Large_entity_used_often", [] { return Quadratic_Blowup("<Root>", "</Root>"); }, PARSE_ERROR},
        TDocumentCase{"Large_entity_used_often_in_an_attribute", [] { return Quadratic_Blowup("<Root a='", "'/>"); },
                      PARSE_ERROR},
        TDocumentCase{"Default_attributes_that_expand",
                      [] {
                          return "<!DOCTYPE Root [<!ATTLIST a b CDATA '" + QByteArray(50'000, 'x') + "'>]><Root>" +
                                 Repeated("<a/>", 400) + "</Root>";
                      },
                      Starts("entities expand to more than 10 MB")},
        TDocumentCase{"Entity_that_refers_to_itself",
                      [] { return "<!DOCTYPE Root [<!ENTITY e '&e;'>]><Root>&e;</Root>"; }, PARSE_ERROR},
        TDocumentCase{"Many_attributes", [] { return With_Attributes(5'000); }, "nothing"},
        TDocumentCase{"Too_many_attributes", [] { return With_Attributes(500'000); }, Starts("too many attributes")},
        TDocumentCase{"Too_many_attributes_in_several_elements",
                      [] { return "<Root>\n" + Repeated(With_Attributes(6'000), 4) + "</Root>"; },
                      Parse_Error("too many attributes", 2, 3 * With_Attributes(6'000).size() + 1)},
        TDocumentCase{"Too_many_attributes_behind_a_comment",
                      [] { return With_Attributes_Behind("<Root><!-- <a b=' -->", "</Root>"); },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_an_instruction",
                      [] { return With_Attributes_Behind("<Root><?a <a b=\" ?>", "</Root>"); },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_a_section",
                      [] { return With_Attributes_Behind("<Root><![CDATA[<a b=']]>", "</Root>"); },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_a_text",
                      [] { return With_Attributes_Behind("<Root>a 'b \"c", "</Root>"); },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_an_attribute",
                      [] { return With_Attributes_Behind("<Root a='\">' b=\"'>\">", "</Root>"); },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_a_document_type",
                      [] {
                          return With_Attributes_Behind("<!DOCTYPE Root PUBLIC \"'\" '\"<!--' [<!-- ' --><!ATTLIST a b "
                                                        "CDATA '>' c (d|e) \"d\"><?f ' ?><!ELEMENT a (b)>]>",
                                                        "");
                      },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_behind_an_angle_bracket_in_quotes",
                      [] { return "<Root a='>'\n" + With_Attributes(20'000).mid(5) + "\n"; },
                      Parse_Error("too many attributes", 3, 1)},
        TDocumentCase{"Too_many_attributes_in_an_entity", [] { return With_Attributes_In_Entity(20'000, "=", 1); },
                      Parse_Error("too many attributes", 2, 1)},
        TDocumentCase{"Attributes_in_an_entity_used_often", [] { return With_Attributes_In_Entity(2'000, "=", 10); },
                      "nothing"},
        TDocumentCase{"Too_many_attributes_in_an_entity_used_often",
                      [] { return With_Attributes_In_Entity(2'000, "=", 300); }, Starts("too many attributes")},
        TDocumentCase{"Attributes_whose_equals_signs_are_references",
                      [] { return With_Attributes_In_Entity(2'000, "&#61;", 1); }, "nothing"},
        TDocumentCase{"Too_many_attributes_whose_equals_signs_are_references",
                      [] { return With_Attributes_In_Entity(20'000, "&#x3D;", 1); },
                      Parse_Error("too many attributes", 2, 1)},
        TDocumentCase{"Long_namespaces", [] { return With_Long_Namespaces(1'000); }, "nothing"},
        TDocumentCase{"Too_long_namespaces", [] { return With_Long_Namespaces(1'000'000); },
                      Starts("too many namespaces or declared attributes")},
        TDocumentCase{"Percent_signs_without_a_document_type",
                      [] { return "<Root>" + QByteArray(4'000'000, '%') + "</Root>"; }, "nothing"},
        TDocumentCase{"Percent_signs_below_a_document_type",
                      [] { return "<!DOCTYPE Root><Root>" + QByteArray(4'000'000, '%') + "</Root>"; }, TOO_MUCH},
        TDocumentCase{
            "References_in_entities",
            [] { return "<!DOCTYPE Root [<!ENTITY e ''>]><Root>" + Repeated("<aa/>", 1'999'999) + "</Root>"; },
            TOO_MUCH},
        TDocumentCase{"References_in_entities_behind_a_comment_and_an_instruction",
                      [] {
                          return "<!--<a--><?b <!--?>\n<!DOCTYPE Root [<!ENTITY e ''>]><Root>" +
                                 Repeated("<aa/>", 1'999'999) + "</Root>";
                      },
                      TOO_MUCH},
        TDocumentCase{
            "Document_type_in_a_comment",
            [] { return "<!--<!DOCTYPE Root [<!ENTITY e ''>]>--><Root>" + Repeated("<aa/>", 1'999'999) + "</Root>"; },
            "nothing"},
        TDocumentCase{"Texts_with_references_to_the_limit",
                      [] { return "<Root>" + Repeated("&#65;", 3'200'000) + "</Root>"; }, "nothing"},
        TDocumentCase{"Texts_with_references_above_the_limit",
                      [] { return "<Root>" + Repeated("&#65;", 3'300'000) + "</Root>"; }, TOO_MUCH},
        TDocumentCase{"Content_model_256_deep", [] { return With_Content_Model(256); }, "nothing"},
        TDocumentCase{"Content_model_257_deep", [] { return With_Content_Model(257); },
                      Starts("declarations nested deeper than 256 levels")},
        TDocumentCase{"Content_model_1000000_deep", [] { return With_Content_Model(1'000'000); },
                      Starts("declarations nested deeper than 256 levels")},
        TDocumentCase{"Content_model_without_an_end",
                      [] { return "<!DOCTYPE Root [<!ELEMENT a " + Repeated("(", 1'000'000); },
                      Starts("Premature end of document.")},
        TDocumentCase{"Declared_attributes", [] { return With_Declared_Attributes(1'000, 1'000); }, "nothing"},
        TDocumentCase{"Too_many_declared_attributes", [] { return With_Declared_Attributes(100'000, 1); },
                      Parse_Error("too many attributes", 1, 1)},
        TDocumentCase{"Room_for_10000_declared_attributes", [] { return With_Declarations_Of_Size(80'007); },
                      "nothing"},
        TDocumentCase{"Room_for_10001_declared_attributes", [] { return With_Declarations_Of_Size(80'008); },
                      Parse_Error("too many attributes", 1, 1)},
        TDocumentCase{"Too_many_declared_attributes_behind_a_comment",
                      [] { return "<!-- -->" + With_Declared_Attributes(100'000, 1); },
                      Parse_Error("too many attributes", 1, 1)},
        TDocumentCase{"Declared_attributes_of_too_many_elements",
                      [] { return With_Declared_Attributes(3'000, 1'000'000); },
                      Starts("too many namespaces or declared attributes")},
        TDocumentCase{"Declared_attributes_in_an_entity", [] { return With_Hidden_Attributes(10); }, "nothing"},
        TDocumentCase{"Too_many_declared_attributes_in_an_entity", [] { return With_Hidden_Attributes(1'000); },
                      Starts("Entity expands to more characters than the entity expansion limit.")},
        TDocumentCase{"Namespaces", [] { return With_Namespaces(10, "<p0:a/>", 100'000); }, "nothing"},
        TDocumentCase{"Too_many_namespaces", [] { return With_Namespaces(5'000, "<p0:a/>", 50'000); },
                      Starts("too many namespaces or declared attributes")},
        TDocumentCase{"Too_many_namespaces_in_nested_elements",
                      [] { return With_Namespaces(1'000, "<a xmlns:q='v'/>", 20'000); },
                      Starts("too many namespaces or declared attributes")},
        TDocumentCase{"Many_equals_signs_in_a_text", [] { return "<Root>" + QByteArray(100'000, '=') + "</Root>"; },
                      "nothing"},
        TDocumentCase{"Many_equals_signs_in_an_attribute",
                      [] { return "<Root a='" + QByteArray(100'000, '=') + "'/>"; }, "nothing"},
        TDocumentCase{"Many_equals_signs_in_a_comment",
                      [] { return "<Root><!-- <a " + QByteArray(100'000, '=') + " --></Root>"; }, "nothing"},
        TDocumentCase{"Many_equals_signs_in_an_instruction",
                      [] { return "<Root><?a <a " + QByteArray(100'000, '=') + "?></Root>"; }, "nothing"},
        TDocumentCase{"Many_equals_signs_in_a_section",
                      [] { return "<Root><![CDATA[<a " + QByteArray(100'000, '=') + "]]></Root>"; }, "nothing"},
        TDocumentCase{
            "Many_equals_signs_behind_a_document_type",
            [] { return "<!DOCTYPE Root [<!ATTLIST a b CDATA ''>]><Root>" + QByteArray(100'000, '=') + "</Root>"; },
            "nothing"},
        TDocumentCase{"Undeclared_entity", [] { return "<Root>&e;</Root>"; }, Starts("Entity 'e' not declared.")},
        TDocumentCase{"Control_character", [] { return "<Root>\x01</Root>"; }, Starts("Invalid XML character.")},
        TDocumentCase{"Null_character", [] { return QByteArray("<Root>\0</Root>", 14); }, PARSE_ERROR},
        TDocumentCase{"Control_character_in_an_attribute", [] { return "<Root a='\x02'/>"; },
                      Starts("Invalid XML character.")},
        TDocumentCase{"Reference_to_a_control_character", [] { return "<Root>&#1;</Root>"; },
                      Starts("Invalid character reference.")},
        TDocumentCase{"Reference_to_a_lone_surrogate", [] { return "<Root>&#xD800;</Root>"; },
                      Starts("Invalid character reference.")},
        TDocumentCase{"Lone_surrogate", [] { return "<Root>\xED\xA0\x80</Root>"; }, PARSE_ERROR},
        TDocumentCase{"First_half_of_a_character_in_UTF_16",
                      [] { return In_UTF_16(QString("<Root>\nab") + QChar(0xD835) + "c</Root>"); },
                      Parse_Error("Encountered incorrectly encoded content.", 2, 3)},
        TDocumentCase{"Second_half_of_a_character_in_UTF_16",
                      [] { return In_UTF_16(QString("<Root>") + QChar(0xDC62) + "</Root>"); },
                      Parse_Error("Encountered incorrectly encoded content.", 1, 7)},
        TDocumentCase{"First_half_behind_a_whole_character_in_UTF_16",
                      [] { return In_UTF_16(QString("<Root>\U0001D462") + QChar(0xD835) + "</Root>"); },
                      Parse_Error("Encountered incorrectly encoded content.", 1, 9)},
        TDocumentCase{"Half_of_a_character_in_UTF_32",
                      [] {
                          return QByteArray("\0\0\xFE\xFF\0\0\0<\0\0\0a\0\0\0>", 16) + QByteArray("\0\0\xD8\0", 4) +
                                 QByteArray("\0\0\0<\0\0\0/\0\0\0a\0\0\0>", 16);
                      },
                      Parse_Error("Encountered incorrectly encoded content.", 1, 4)},
        TDocumentCase{"Character_FFFE", [] { return "<Root>\xEF\xBF\xBE</Root>"; }, PARSE_ERROR},
        TDocumentCase{"Character_FFFF", [] { return "<Root>\xEF\xBF\xBF</Root>"; }, PARSE_ERROR},
        TDocumentCase{"Broken_UTF_8", [] { return "<Root>\nab\xC3</Root>"; },
                      Parse_Error("Encountered incorrectly encoded content.", 2, 3)},
        TDocumentCase{"UTF_8_that_is_cut", [] { return "<Root>\n</Root>\xC3"; },
                      Parse_Error("Encountered incorrectly encoded content.", 2, 8)},
        TDocumentCase{"Unknown_encoding", [] { return "<?xml version='1.0' encoding='nonsense'?><Root/>"; },
                      Starts("Encoding nonsense is unsupported")},
        TDocumentCase{"Attribute_given_twice", [] { return "<Root a='1' a='2'/>"; },
                      Starts("Attribute 'a' redefined.")}),
    [](const testing::TestParamInfo<TDocumentCase>& row) { return std::string(row.param.name); });

class TXmlFile_Text_Test : public testing::Test
{
protected:
    QString Root_Text(const QByteArray& data)
    {
        d_file.Open_Data(data, "Root", nullptr, true);
        return d_file.Read_Text_Node(d_file.Root_Element(), true);
    }

    TXmlFile d_file;
    const QString d_face = QString::fromUtf8("\xF0\x9F\x98\x80");
};

TEST_F(TXmlFile_Text_Test, Reads_characters_beyond_U_FFFF)
{
    EXPECT_EQ(Root_Text("<Root>a\xF0\x9F\x98\x80z</Root>"), "a" + d_face + "z");
}

TEST_F(TXmlFile_Text_Test, Reads_references_beyond_U_FFFF)
{
    EXPECT_EQ(Root_Text("<Root>a&#x1F600;b&#128512;c&#252;d&#x3b1;</Root>"),
              "a" + d_face + "b" + d_face + QString::fromUtf8("cüdα"));
}

TEST_F(TXmlFile_Text_Test, Reads_references_beyond_U_FFFF_behind_others)
{
    EXPECT_EQ(Root_Text("<Root>&amp;&lt;&#x1F600;</Root>"), "&<" + d_face);
}

TEST_F(TXmlFile_Text_Test, Reads_no_reference_where_there_is_none)
{
    EXPECT_EQ(Root_Text("<Root><![CDATA[&#x1F600;]]></Root>"), "&#x1F600;");
    EXPECT_EQ(Root_Text("<?a &#x1F600;?><Root><![CDATA[<]]><!-- &#x1F600; -->&#x1F600;</Root>"), "<");
    EXPECT_EQ(d_file.Root_Element()->text(), "<" + d_face);
    EXPECT_EQ(d_file.Root_Element()->childNodes().at(1).nodeValue(), " &#x1F600; ");
    EXPECT_EQ(d_file.Root_Element()->parentNode().firstChild().nodeValue(), "&#x1F600;");
}

TEST_F(TXmlFile_Text_Test, Reads_references_beyond_U_FFFF_behind_a_comment_instruction_or_section_of_any_length)
{
    const QByteArray filling(11'000'000, 'x');

    for (const auto& [begin, end] :
         {std::pair("<!--", "-->"), std::pair("<?a ", "?>"), std::pair("<![CDATA[", "]]>")}) {
        d_file.Open_Data("<Root><A>" + (begin + filling + end) + "</A><B>&#x1F600;</B></Root>", "Root", nullptr, true);

        const QDomElement behind = d_file.Get_Node(d_file.Root_Element(), "B", false);
        EXPECT_EQ(d_file.Read_Text_Node(&behind, false), d_face) << begin;
    }
}

TEST_F(TXmlFile_Text_Test, Reads_references_beyond_U_FFFF_behind_what_looks_like_a_comment_in_an_entity)
{
    EXPECT_EQ(Root_Text("<!DOCTYPE Root [<!ENTITY e '<!-- &#x1F600;'>]><Root>&#x1F600;<!-- --></Root>"), d_face);
}

TEST_F(TXmlFile_Text_Test, Reads_a_file_in_UTF_16_whose_bytes_look_like_carriage_returns)
{
    QTemporaryDir folder;
    TXmlFile file;
    file.Set_File_Name(folder.filePath("file"));

    for (const char* encoding : {"UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}) {
        QTextEncoder encoder(QTextCodec::codecForName(encoding));
        QFile bytes(folder.filePath("file"));
        ASSERT_TRUE(bytes.open(QIODevice::WriteOnly));
        bytes.write(encoder.fromUnicode(QString::fromUtf8("\uFEFF<Root>\r\n<A>\u010D\u0D00\r\n\u010D</A></Root>")));
        bytes.close();

        file.Open("Root", nullptr, true);

        const QDomElement leaf = file.Get_Node(file.Root_Element(), "A", false);
        EXPECT_EQ(file.Read_Text_Node(&leaf, false), QString::fromUtf8("\u010D\u0D00\n\u010D")) << encoding;
    }
}

TEST_F(TXmlFile_Text_Test, Reads_other_encodings)
{
    EXPECT_EQ(Root_Text("<?xml version='1.0' encoding='ISO-8859-1'?><Root>\xFC</Root>"), QString(QChar(0xFC)));
    EXPECT_EQ(Root_Text("\xEF\xBB\xBF<Root>\xC3\xBC</Root>"), QString(QChar(0xFC)));
    const QString document = "<?xml version='1.0' encoding='UTF-16'?><Root>" + d_face + "</Root>";
    EXPECT_EQ(Root_Text(QTextCodec::codecForName("UTF-16")->fromUnicode(document)), d_face);
}

// All that a document tells about a node and those below it.
QStringList Nodes(const QDomNode& node)
{
    const auto shown = [](const QString& text) { return text.isNull() ? QString("none") : "'" + text + "'"; };
    QStringList nodes = {QString("%1 %2 %3 %4 %5 %6 %7:%8")
                             .arg(node.nodeType())
                             .arg(node.nodeName(), shown(node.localName()), shown(node.namespaceURI()),
                                  shown(node.prefix()), shown(node.nodeValue()))
                             .arg(node.lineNumber())
                             .arg(node.columnNumber())};

    for (int i = 0; i < node.attributes().size(); ++i) {
        nodes += Nodes(node.attributes().item(i));
    }
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
        nodes += Nodes(child);
    }
    return nodes;
}

TEST(Xml_Parse_Test, Builds_the_document_that_the_parser_of_Qt_builds)
{
    for (const bool namespace_processing : {true, false}) {
        for (const char* text :
             {"<?xml version='1.0'?>\n<Root a='b &amp; c'>\n  <A/> <B>&lt;\td</B></Root>",
              "<Root><!--e--><?f g?><![CDATA[ <h> ]]></Root>",
              "<Root xmlns='u' xmlns:p='v' a='b' p:c='d'><p:A p:b='c'/><B/></Root>",
              "<Root><A><B xmlns='u'/></A><C/></Root>", "<Root xml:space='preserve'> </Root>",
              "<Root><A/><xml:B/></Root>", "<Root><!-- xmlns='u' --><A b='xml:c'>xmlns</A></Root>",
              "<!--<!DOCTYPE Root>--><Root/>", "<!DOCTYPE Root [<!ENTITY e \"<a &#120;mlns='u'/>\">]><Root>&e;</Root>",
              "<!DOCTYPE Root [<!ENTITY e '<a>b</a>'>]><Root c='&lt;'>d &e; <!--f--></Root>",
              "<!DOCTYPE Root [<!ENTITY % p ''>%p;]><Root>&e;<A b='&e;'/>&e;</Root>",
              "<!DOCTYPE Root [<!ATTLIST Root b CDATA 'c'>]><Root/>",
              "<!DOCTYPE Root [<!ATTLIST Root xmlns CDATA 'u'>]><Root/>"}) {
            QDomDocument document;
            QDomDocument expected;
            TXmlFault fault;

            EXPECT_TRUE(Xml_Parse(text, namespace_processing, &document, &fault)) << text;
            EXPECT_TRUE(expected.setContent(QString(text), namespace_processing)) << text;
            EXPECT_EQ(Nodes(document), Nodes(expected)) << text;
        }
    }
}

TEST_F(TXmlFile_Text_Test, Expands_its_own_entities)
{
    EXPECT_EQ(Root_Text("<!DOCTYPE Root [<!ENTITY unit 'mm'>]><Root>1 &unit;</Root>"), "1 mm");
}

TEST_F(TXmlFile_Text_Test, Never_reads_another_file)
{
    const QByteArray url = QByteArray("file://") + NORVEXA_TEST_DATA + "/budget_v3.norvexa";

    EXPECT_EQ(Root_Text("<!DOCTYPE Root [<!ENTITY e SYSTEM '" + url + "'>]><Root>&e;</Root>"), "");
    EXPECT_EQ(Root_Text("<!DOCTYPE Root [<!ENTITY % e SYSTEM '" + url + "'> %e;]><Root>x</Root>"), "x");
    EXPECT_EQ(Root_Text("<!DOCTYPE Root SYSTEM '" + url + "'><Root>x</Root>"), "x");
}

TEST_F(TXmlFile_Text_Test, Reads_undeclared_prefixes_only_without_namespaces)
{
    EXPECT_EQ(Opened("<Root><x:a/></Root>", true), Parse_Error("Namespace prefix 'x' not declared", 1, 12));
    EXPECT_EQ(Opened("<Root><x:a/></Root>", false), "nothing");
}

// The process-wide policy

class TXmlFile_Policy_Test : public testing::Test
{
protected:
    void TearDown() override { QDomImplementation::setInvalidDataPolicy(QDomImplementation::ReturnNullNode); }
};

TEST_F(TXmlFile_Policy_Test, Returns_null_nodes_for_illegal_data)
{
    QDomImplementation::setInvalidDataPolicy(QDomImplementation::DropInvalidChars);
    const TXmlFile file;

    EXPECT_EQ(QDomImplementation::invalidDataPolicy(), QDomImplementation::ReturnNullNode);
}

TEST_F(TXmlFile_Policy_Test, Is_as_before_after_each_operation)
{
    TXmlFile file;
    QDomImplementation::setInvalidDataPolicy(QDomImplementation::DropInvalidChars);

    file.Open_Data("<Root/>", "Root", nullptr, true);
    Thrown([&] { file.Open_Data("<Root>", "Root", nullptr, true); });
    file.Write_Text_Node(file.Root_Element(), QString("text"));
    file.Write_Attribute(file.Root_Element(), "name", QString("text"));
    EXPECT_EQ(QDomImplementation::invalidDataPolicy(), QDomImplementation::DropInvalidChars);
}

// Navigation and reading

class TXmlFile_Navigation_Test : public testing::Test
{
protected:
    TXmlFile_Navigation_Test()
    {
        d_file.Open_Data("<Root kind='%1' none=''><!--c--><A>first</A>text<B/><A>second</A><C><!--c-->late</C></Root>",
                         "Root", nullptr, true);
        d_root = d_file.Root_Element();
        d_root_node = *d_root;
    }

    QDomElement Child(const QString& name) const { return d_file.Get_Node(d_root, name, false); }

    TXmlFile d_file;
    QDomElement* d_root = nullptr;
    QDomNode d_root_node;
};

TEST_F(TXmlFile_Navigation_Test, Gets_the_first_child_of_a_name)
{
    EXPECT_EQ(d_file.Get_Node(d_root, "A", false).text(), "first");
    EXPECT_EQ(d_file.Get_Node(&d_root_node, "A", false).text(), "first");
    EXPECT_TRUE(d_file.Get_Node(d_root, "D", true).isNull());
    EXPECT_TRUE(d_file.Get_Node(&d_root_node, "D", true).isNull());
}

TEST_F(TXmlFile_Navigation_Test, Reports_a_missing_child)
{
    const QString message = "content: ERR:  Node '%2' is missing from node 'Root' and not optional.";

    EXPECT_EQ(Thrown([&] { d_file.Get_Node(d_root, "%2", false); }), message);
    EXPECT_EQ(Thrown([&] { d_file.Get_Node(&d_root_node, "%2", false); }), message);
}

TEST_F(TXmlFile_Navigation_Test, Calls_the_parent_of_a_missing_child_by_its_tag_name_or_its_node_name)
{
    d_file.Open_Data("<n:Root xmlns:n='u'/>", "Root", nullptr, true);
    d_root_node = *d_root;

    EXPECT_EQ(Thrown([&] { d_file.Get_Node(d_root, "A", false); }),
              "content: ERR:  Node 'A' is missing from node 'Root' and not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Get_Node(&d_root_node, "A", false); }),
              "content: ERR:  Node 'A' is missing from node 'n:Root' and not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Gets_no_child_of_a_null_node)
{
    for (const bool optional : {false, true}) {
        EXPECT_EQ(Thrown([&] { d_file.Get_Node(&NULL_ELEMENT, "A", optional); }),
                  "content: ERR:  Cannot get child from a NULL node");
        EXPECT_EQ(Thrown([&] { d_file.Get_Node(&NULL_NODE, "A", optional); }),
                  "content: ERR:  Cannot get child from a NULL node");
    }
}

TEST_F(TXmlFile_Navigation_Test, Gets_the_next_sibling_of_a_name)
{
    const QDomElement first = Child("A");
    const QDomElement second = d_file.Get_Sibling_Node(&first, "A", false);

    EXPECT_EQ(second.text(), "second");
    EXPECT_TRUE(d_file.Get_Sibling_Node(&second, "A", true).isNull());
    EXPECT_EQ(Thrown([&] { d_file.Get_Sibling_Node(&second, "B", false); }),
              "content: ERR:  Node 'B' is missing from node 'A' and not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Get_Sibling_Node(&NULL_ELEMENT, "A", true); }),
              "content: ERR:  Cannot get sibling from a NULL node");
}

TEST_F(TXmlFile_Navigation_Test, Gets_the_first_node_of_any_kind)
{
    EXPECT_TRUE(d_file.Get_First_Node(d_root, false).isComment());
    EXPECT_TRUE(d_file.Get_First_Node(&d_root_node, false).isComment());

    const QDomElement empty = Child("B");
    const QDomNode empty_node = empty;
    const QString message = "content: ERR:  Parent 'B' does not have nodes and they are not optional.";
    EXPECT_EQ(Thrown([&] { d_file.Get_First_Node(&empty, false); }), message);
    EXPECT_EQ(Thrown([&] { d_file.Get_First_Node(&empty_node, false); }), message);
    EXPECT_TRUE(d_file.Get_First_Node(&empty, true).isNull());
    EXPECT_TRUE(d_file.Get_First_Node(&empty_node, true).isNull());
}

TEST_F(TXmlFile_Navigation_Test, Gets_the_next_node_of_any_kind)
{
    const QDomNode first = Child("A");
    const QDomNode last = Child("C");

    EXPECT_EQ(d_file.Get_Sibling_Node(&first, false).nodeValue(), "text");
    EXPECT_TRUE(d_file.Get_Sibling_Node(&last, true).isNull());
    EXPECT_EQ(Thrown([&] { d_file.Get_Sibling_Node(&last, false); }),
              "content: ERR:  Node 'C' does not have siblings and they are not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Any_node_of_a_null_node_is_missing)
{
    EXPECT_TRUE(d_file.Get_First_Node(&NULL_ELEMENT, true).isNull());
    EXPECT_TRUE(d_file.Get_First_Node(&NULL_NODE, true).isNull());
    EXPECT_TRUE(d_file.Get_Sibling_Node(&NULL_NODE, true).isNull());
    EXPECT_EQ(Thrown([&] { d_file.Get_First_Node(&NULL_NODE, false); }),
              "content: ERR:  Parent '' does not have nodes and they are not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Shows_no_local_names_without_namespaces)
{
    d_file.Open_Data("<Root><A/></Root>", "Root", nullptr, false);
    const QDomNode node = Child("A");

    EXPECT_EQ(Thrown([&] { d_file.Get_First_Node(&node, false); }),
              "content: ERR:  Parent '' does not have nodes and they are not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Get_Sibling_Node(&node, false); }),
              "content: ERR:  Node '' does not have siblings and they are not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&node, false); }), "content: ERR:  Node Text for '' is not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Shows_tag_names_without_namespaces)
{
    d_file.Open_Data("<Root><A/></Root>", "Root", nullptr, false);
    const QDomElement element = Child("A");

    EXPECT_EQ(Thrown([&] { d_file.Get_First_Node(&element, false); }),
              "content: ERR:  Parent 'A' does not have nodes and they are not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&element, false); }),
              "content: ERR:  Node Text for 'A' is not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Reads_an_attribute)
{
    EXPECT_EQ(d_file.Read_Attribute(d_root, "kind", false), "%1");
    EXPECT_EQ(d_file.Read_Attribute(&d_root_node, "kind", false), "%1");
    EXPECT_EQ(d_file.Read_Attribute(d_root, "none", false), "");
    EXPECT_EQ(d_file.Read_Attribute(&d_root_node, "none", false), "");
    EXPECT_EQ(d_file.Read_Attribute(d_root, "other", true), "");
    EXPECT_EQ(d_file.Read_Attribute(&d_root_node, "other", true), "");
}

TEST_F(TXmlFile_Navigation_Test, Reports_a_missing_attribute)
{
    const QString message = "content: ERR:  Node attribute 'other' missing and not optional.";
    const QDomNode bare = Child("B");

    EXPECT_EQ(Thrown([&] { d_file.Read_Attribute(d_root, "other", false); }), message);
    EXPECT_EQ(Thrown([&] { d_file.Read_Attribute(&d_root_node, "other", false); }), message);
    EXPECT_EQ(Thrown([&] { d_file.Read_Attribute(&bare, "other", false); }), message);
}

TEST_F(TXmlFile_Navigation_Test, Reads_no_attribute_of_a_null_node)
{
    EXPECT_EQ(Thrown([&] { d_file.Read_Attribute(&NULL_ELEMENT, "kind", true); }),
              "content: ERR:  Cannot read attribute from a NULL node");
    EXPECT_EQ(Thrown([&] { d_file.Read_Attribute(&NULL_NODE, "kind", true); }),
              "content: ERR:  Cannot read attribute from a NULL node");
}

TEST_F(TXmlFile_Navigation_Test, Reads_the_text_of_a_node)
{
    const QDomElement element = Child("A");
    const QDomNode node = element;

    EXPECT_EQ(d_file.Read_Text_Node(&element, false), "first");
    EXPECT_EQ(d_file.Read_Text_Node(&node, false), "first");
}

TEST_F(TXmlFile_Navigation_Test, Reads_a_character_data_section_as_text)
{
    d_file.Open_Data("<Root><![CDATA[a < b]]></Root>", "Root", nullptr, true);

    EXPECT_EQ(d_file.Read_Text_Node(d_file.Root_Element(), false), "a < b");
}

TEST_F(TXmlFile_Navigation_Test, Reads_no_text_behind_another_first_child)
{
    const QDomElement commented = Child("C");

    EXPECT_EQ(d_file.Read_Text_Node(&commented, true), "");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&commented, false); }),
              "content: ERR:  Node Text for 'C' is not optional.");
    EXPECT_EQ(d_file.Read_Text_Node(d_root, true), "");
}

TEST_F(TXmlFile_Navigation_Test, Reads_no_text_of_an_empty_node)
{
    d_file.Open_Data("<Root><Name/><Name></Name></Root>", "Root", nullptr, true);
    const QDomElement element = Child("Name");
    const QDomNode node = element.nextSibling();

    EXPECT_EQ(d_file.Read_Text_Node(&element, true), "");
    EXPECT_EQ(d_file.Read_Text_Node(&node, true), "");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&element, false); }),
              "content: ERR:  Node Text for 'Name' is not optional.");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&node, false); }),
              "content: ERR:  Node Text for 'Name' is not optional.");
}

TEST_F(TXmlFile_Navigation_Test, Reads_no_text_of_a_null_node)
{
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&NULL_ELEMENT, true); }),
              "content: ERR:  Cannot read data from a NULL node");
    EXPECT_EQ(Thrown([&] { d_file.Read_Text_Node(&NULL_NODE, true); }),
              "content: ERR:  Cannot read data from a NULL node");
}

// Writing

class TXmlFile_Writing_Test : public testing::Test
{
protected:
    TXmlFile_Writing_Test()
    {
        QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777));
        d_file.Reset("Root", 3);
        d_root = d_file.Root_Element();
    }

    QByteArray Data(bool compact)
    {
        QByteArray data = "old";
        d_file.Write_Data(&data, compact);
        return data;
    }

    QByteArray Text_Of(const QByteArray& name)
    {
        const QByteArray data = Data(true);
        const int start = data.indexOf("<" + name + ">") + name.size() + 2;
        return data.mid(start, data.indexOf("</" + name + ">") - start);
    }

    QString Write_File(const QString& name)
    {
        d_file.Set_File_Name(name);
        return Thrown([&] { d_file.Write_File(false); });
    }

    QTemporaryDir d_folder;
    TXmlFile d_file;
    QDomElement* d_root = nullptr;
};

const QByteArray DECLARATION = "<?xml version=\"1.0\" encoding=\"utf-8\"?>";

TEST_F(TXmlFile_Writing_Test, Begins_with_a_declaration_and_a_versioned_root)
{
    EXPECT_EQ(Data(false), DECLARATION + "\n<Root File_Version=\"3\"/>\n");
}

TEST_F(TXmlFile_Writing_Test, Begins_with_a_document_type_and_no_declaration)
{
    d_file.Reset("Kind", "Root", 12);

    EXPECT_EQ(Data(false), "<!DOCTYPE Kind>\n<Root File_Version=\"12\"/>\n");
}

TEST_F(TXmlFile_Writing_Test, Writes_below_the_root_of_a_document_with_a_document_type)
{
    d_file.Reset("Kind", "Root", 12);
    d_file.Create_Node(d_file.Root_Element(), "A");

    EXPECT_EQ(Data(true), "<!DOCTYPE Kind><Root File_Version=\"12\"><A/></Root>");
}

TEST_F(TXmlFile_Writing_Test, Starts_anew)
{
    d_file.Create_Node(d_root, "Old");
    d_file.Reset("New", 4);
    EXPECT_EQ(Data(false), DECLARATION + "\n<New File_Version=\"4\"/>\n");

    d_file.Clear();
    EXPECT_EQ(Data(true).trimmed(), "");
}

TEST_F(TXmlFile_Writing_Test, Indents_by_4_blanks_per_level)
{
    QDomElement outer = d_file.Create_Node(d_root, "Outer");
    QDomElement inner = d_file.Create_Node(&outer, "Inner");
    d_file.Write_Text_Node(&inner, QString("text"));

    EXPECT_EQ(Data(false), DECLARATION + "\n<Root File_Version=\"3\">\n    <Outer>\n        <Inner>text</Inner>\n"
                                         "    </Outer>\n</Root>\n");
    EXPECT_EQ(Data(true), DECLARATION + "<Root File_Version=\"3\"><Outer><Inner>text</Inner></Outer></Root>");
}

TEST_F(TXmlFile_Writing_Test, Writes_texts_and_numbers)
{
    QDomElement text = d_file.Create_Node(d_root, "Text");
    QDomElement real = d_file.Create_Node(d_root, "Real");
    QDomElement whole = d_file.Create_Node(d_root, "Whole");
    d_file.Write_Text_Node(&text, QString::fromUtf8("<a & \"b\"> ü"));
    d_file.Write_Text_Node(&real, 2.5, 3);
    d_file.Write_Text_Node(&whole, -7);

    EXPECT_EQ(Text_Of("Text"), "&lt;a &amp; \"b\"> \xC3\xBC");
    EXPECT_EQ(Text_Of("Real"), "2.500");
    EXPECT_EQ(Text_Of("Whole"), "-7");
}

TEST_F(TXmlFile_Writing_Test, Appends_a_text_to_the_one_that_is_there)
{
    QDomElement node = d_file.Create_Node(d_root, "Node");
    d_file.Write_Text_Node(&node, QString("a"));
    d_file.Write_Text_Node(&node, QString("b"));

    EXPECT_EQ(Data(true), DECLARATION + "<Root File_Version=\"3\"><Node>ab</Node></Root>");
}

TEST_F(TXmlFile_Writing_Test, Writes_attributes)
{
    QDomElement node = d_file.Create_Node(d_root, "Node");
    d_file.Write_Attribute(&node, "text", QString("old"));
    d_file.Write_Attribute(&node, "text", QString("a < \"b\""));
    d_file.Write_Attribute(&node, "real", 2.5, 3);
    d_file.Write_Attribute(&node, "whole", 7);

    EXPECT_EQ(node.attributes().size(), 3);
    EXPECT_EQ(node.attribute("text"), "a < \"b\"");
    EXPECT_EQ(node.attribute("real"), "2.500");
    EXPECT_EQ(node.attribute("whole"), "7");
    EXPECT_TRUE(Data(true).contains("text=\"a &lt; &quot;b&quot;\""));
}

TEST_F(TXmlFile_Writing_Test, Creates_no_unnamed_nodes_and_attributes)
{
    EXPECT_EQ(Thrown([&] { d_file.Create_Node(d_root, ""); }), "content: ERR:  Cannot create an unnamed node");
    EXPECT_EQ(Thrown([&] { d_file.Write_Attribute(d_root, "", QString("text")); }),
              "content: ERR:  Cannot create an unnamed attribute");
}

TEST_F(TXmlFile_Writing_Test, Creates_no_node_of_an_illegal_name_among_legal_ones)
{
    for (int count = 0; count < 2; ++count) {
        EXPECT_EQ(d_file.Create_Node(d_root, "Node").tagName(), "Node");
        EXPECT_TRUE(d_file.Create_Node(d_root, "a name").isNull());
    }
    EXPECT_EQ(Data(true), DECLARATION + "<Root File_Version=\"3\"><Node/><Node/></Root>");
}

TEST_F(TXmlFile_Writing_Test, Creates_nothing_in_a_null_node)
{
    QDomElement null;

    EXPECT_EQ(Thrown([&] { d_file.Create_Node(&null, ""); }), "content: ERR:  Cannot create node from a NULL node");
    EXPECT_EQ(Thrown([&] { d_file.Write_Text_Node(&null, QString("text")); }),
              "content: ERR:  Cannot append data to a NULL node");
    EXPECT_EQ(Thrown([&] { d_file.Write_Attribute(&null, "name", QString("text")); }), "nothing");
}

TEST_F(TXmlFile_Writing_Test, Writes_nothing_that_could_not_be_read_again)
{
    const QString illegal = QString("%1") + QChar(0x1);
    QDomElement node = d_file.Create_Node(d_root, "Node");

    EXPECT_EQ(Thrown([&] { d_file.Write_Text_Node(&node, illegal); }),
              "content: ERR:  Cannot write node 'Node' with data '" + illegal + "'");
    EXPECT_EQ(Thrown([&] { d_file.Write_Attribute(&node, "name", illegal); }),
              "content: ERR:  Cannot write node 'name' with data '" + illegal + "'");
    EXPECT_EQ(Thrown([&] { d_file.Write_Attribute(&node, "a name", QString("text")); }),
              "content: ERR:  Cannot write node 'a name' with data 'text'");
    EXPECT_TRUE(d_file.Create_Node(d_root, "a name").isNull());
    EXPECT_EQ(Data(true), DECLARATION + "<Root File_Version=\"3\"><Node/></Root>");
}

TEST_F(TXmlFile_Writing_Test, Writes_characters_beyond_U_FFFF)
{
    const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
    d_file.Write_Text_Node(d_root, face);
    d_file.Write_Attribute(d_root, "face", face);

    TXmlFile reader;
    reader.Open_Data(Data(false), "Root", nullptr, true);
    EXPECT_EQ(reader.Read_Text_Node(reader.Root_Element(), false), face);
    EXPECT_EQ(reader.Read_Attribute(reader.Root_Element(), "face", false), face);
}

TEST_F(TXmlFile_Writing_Test, Reads_back_attributes_with_line_breaks)
{
    d_file.Write_Attribute(d_root, "lines", QString("a\nb\tc\rd"));

    TXmlFile reader;
    reader.Open_Data(Data(false), "Root", nullptr, true);
    EXPECT_EQ(reader.Read_Attribute(reader.Root_Element(), "lines", false), "a\nb\tc\rd");
}

TEST_F(TXmlFile_Writing_Test, Writes_the_file)
{
    d_file.Create_Node(d_root, "Node");
    d_file.Set_File_Name(d_folder.filePath("file"));

    d_file.Write_File(false);
    EXPECT_EQ(Content(d_folder.filePath("file")), Data(false));
    d_file.Write_File(true);
    EXPECT_EQ(Content(d_folder.filePath("file")), Data(true));
}

TEST_F(TXmlFile_Writing_Test, Writes_a_compact_file_without_line_breaks)
{
    d_file.Write_Text_Node(d_root, QString("a\nb"));

    EXPECT_EQ(Data(true), DECLARATION + "<Root File_Version=\"3\">ab</Root>");
}

TEST_F(TXmlFile_Writing_Test, Refuses_a_file_that_may_not_be_written)
{
    const QString name = d_folder.filePath("file");
    Write(name, "old");
    QFile::setPermissions(name, QFile::Permissions(0x4444));

    EXPECT_EQ(As_Plain_User([&] { return Write_File(name); }),
              "access: ERR:  Cannot open file '" + name + "' for writing");
    EXPECT_EQ(Content(name), "old");
}

TEST_F(TXmlFile_Writing_Test, Reports_a_file_that_cannot_be_written)
{
    const QString missing = d_folder.filePath("%2/file");

    EXPECT_EQ(Write_File(missing),
              "content: ERR:  Cannot write file '" + missing + "'.  Reason: No such file or directory");
    EXPECT_EQ(Write_File(d_folder.path()),
              "content: ERR:  Cannot write file '" + d_folder.path() + "'.  Reason: Is a directory");
}

TEST_F(TXmlFile_Writing_Test, Keeps_the_old_file_when_the_new_one_could_not_be_opened)
{
    const QString name = d_folder.filePath("%2");
    d_file.Write_Text_Node(d_root, QString(3'000'000, '&'));
    EXPECT_EQ(Write_File(name), "nothing");
    const QByteArray old = Data(false);

    d_file.Write_Text_Node(d_root, QString(400'000, '<'));
    EXPECT_EQ(Write_File(name), "content: ERR:  Cannot write file '" + name +
                                    "'.  Reason: it could not be opened again: "
                                    "too many elements, attributes, texts and references");
    EXPECT_EQ(Content(name), old);
}

TEST(Xml_Excess_Test, Is_why_bytes_are_not_parsed)
{
    EXPECT_EQ(Xml_Excess("<Root/>"), "");
    EXPECT_EQ(Xml_Excess(Of_Cost(QByteArray(), "<a>b</a>", 94, 0)), "");
    EXPECT_EQ(Xml_Excess(Of_Cost(QByteArray(), "<a>b</a>", 94, 1)),
              "too many elements, attributes, texts and references");
    EXPECT_EQ(Xml_Excess("<Root>" + Repeated("<a/>", 1'999'999) + "</Root>"), "");
    EXPECT_EQ(Xml_Excess("<Root>" + Repeated("<a/>", 2'000'000) + "</Root>"), "more than 2000000 elements");
    EXPECT_EQ(Xml_Excess("<Root>" + Repeated("<Name>b</Name>", 1'400'000) + "</Root>"),
              "too many elements, attributes, texts and references");
    EXPECT_EQ(Xml_Excess(QByteArray(64 * 1024 * 1024 + 1, 'x')), "larger than 64 MB");
}

// Null pointers

using TXmlFile_Death_Test = testing::Test;

TEST_F(TXmlFile_Death_Test, Aborts_on_a_null_pointer)
{
    TXmlFile file;
    const QDomElement* element = nullptr;
    const QDomNode* node = nullptr;
    QDomElement* writable = nullptr;
    const char source[] = "\\.\\./core/xmlfile\\.cpp: ";

    EXPECT_DEATH(file.Get_Node(element, "a", true), std::string(source) + "Get_Node: node\n");
    EXPECT_DEATH(file.Get_Node(node, "a", true), std::string(source) + "Get_Node: node\n");
    EXPECT_DEATH(file.Get_Sibling_Node(element, "a", true), std::string(source) + "Get_Sibling_Node: current_node\n");
    EXPECT_DEATH(file.Get_First_Node(element, true), std::string(source) + "Get_First_Node: parent\n");
    EXPECT_DEATH(file.Get_First_Node(node, true), std::string(source) + "Get_First_Node: parent\n");
    EXPECT_DEATH(file.Get_Sibling_Node(node, true), std::string(source) + "Get_Sibling_Node: current_node\n");
    EXPECT_DEATH(file.Read_Attribute(element, "a", true), std::string(source) + "Read_Attribute: node\n");
    EXPECT_DEATH(file.Read_Attribute(node, "a", true), std::string(source) + "Read_Attribute: node\n");
    EXPECT_DEATH(file.Read_Text_Node(element, true), std::string(source) + "Read_Text_Node: node\n");
    EXPECT_DEATH(file.Read_Text_Node(node, true), std::string(source) + "Read_Text_Node: node\n");
    EXPECT_DEATH(file.Create_Node(writable, "a"), std::string(source) + "Create_Node: parent\n");
    EXPECT_DEATH(file.Write_Text_Node(writable, QString("a")), std::string(source) + "Write_Text_Node: node\n");
    EXPECT_DEATH(file.Write_Text_Node(writable, 1), std::string(source) + "Write_Text_Node: node\n");
    EXPECT_DEATH(file.Write_Text_Node(writable, 1.0, 1), std::string(source) + "Write_Text_Node: node\n");
    EXPECT_DEATH(file.Write_Attribute(writable, "a", QString("a")), std::string(source) + "Write_Attribute: node\n");
    EXPECT_DEATH(file.Write_Attribute(writable, "a", 1), std::string(source) + "Write_Attribute: node\n");
    EXPECT_DEATH(file.Write_Attribute(writable, "a", 1.0, 1), std::string(source) + "Write_Attribute: node\n");
    EXPECT_DEATH(file.Write_Data(nullptr, true), std::string(source) + "Write_Data: data\n");
}

TEST(TXmlFileException_Test, Carries_its_message_and_type)
{
    const TXmlFileException exception("text", TXmlFileException::Xml_Content);

    EXPECT_EQ(exception.Message(), "text");
    EXPECT_EQ(exception.Type(), TXmlFileException::Xml_Content);
    EXPECT_EQ(static_cast<int>(TXmlFileException::File_Access), 0);
    EXPECT_EQ(static_cast<int>(TXmlFileException::Xml_Content), 1);
}
