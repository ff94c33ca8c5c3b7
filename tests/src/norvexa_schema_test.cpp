#include "src/norvexa.h"

#include "core/xmlpolicy.h"
#include "tests/support/qtprinters.h"
#include "tests/support/randombudget.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QList>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

const char SCHEMA[] = NORVEXA_DOCS "/norvexa-3.xsd";
const char DESCRIPTION[] = NORVEXA_DOCS "/file-format.md";

QString Golden_File(int version)
{
    return QString("%1/budget_v%2.norvexa").arg(NORVEXA_TEST_DATA, QString::number(version));
}

QString Content(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString("unreadable");
}

// Everything that xmllint says against the files, one call for all of them; empty if each of them was found valid.
QStringList Complaints(const QStringList& files)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start("xmllint", QStringList({"--noout", "--nonet", "--schema", SCHEMA}) + files);
    process.waitForFinished();

    QStringList lines = QString::fromUtf8(process.readAll()).split('\n', Qt::SkipEmptyParts);
    for (const QString& file : files) {
        if (lines.removeAll(file + " validates") == 0) {
            lines << file + " was not found valid";
        }
    }
    return lines;
}

QStringList Valid(const QStringList& files)
{
    const QStringList complaints = Complaints(files);
    QStringList valid;
    for (const QString& file : files) {
        if (!complaints.contains(file + " was not found valid")) {
            valid << file;
        }
    }
    return valid;
}

// The error text of a load, empty on success.
QString Load(const QString& name)
{
    QString error;
    Loaded_Budget(name, &error);
    return error;
}

QString Not_Found(const char* name, const char* parent)
{
    return QString("ERR:  Node '%1' is missing from node '%2' and not optional.").arg(name, parent);
}

QString No_Text(const char* name)
{
    return QString("ERR:  Node Text for '%1' is not optional.").arg(name);
}

} // namespace

class TNorvexa_Schema_Test : public testing::Test
{
protected:
    QString File(const QString& name) const { return d_folder.filePath(name + ".norvexa"); }

    QString Write(const QString& name, const QString& text) const
    {
        QFile file(File(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text.toUtf8()), text.toUtf8().size());
        return file.fileName();
    }

    QString Save(const QString& name, const TBudget& budget) const
    {
        EXPECT_EQ(Save_Budget(budget, File(name)), "") << name.toStdString();
        return File(name);
    }

private:
    QTemporaryDir d_folder;
};

// What the editor writes

TEST_F(TNorvexa_Schema_Test, Accepts_the_examples)
{
    QStringList files;
    for (const QFileInfo& file : QDir(NORVEXA_EXAMPLES).entryInfoList({"*.norvexa"})) {
        files << file.filePath();
    }

    EXPECT_GE(files.size(), 4);
    EXPECT_EQ(Complaints(files), QStringList());
}

TEST_F(TNorvexa_Schema_Test, Accepts_the_golden_file)
{
    EXPECT_EQ(Complaints({Golden_File(3)}), QStringList());
}

TEST_F(TNorvexa_Schema_Test, Accepts_saved_budgets_of_all_kinds)
{
    QStringList files;
    for (quint32 seed = 0; seed < 300; ++seed) {
        files << Save(QString::number(seed), Random_Budget(seed));
    }

    EXPECT_EQ(Complaints(files), QStringList());
}

TEST_F(TNorvexa_Schema_Test, Accepts_a_saved_budget_that_is_empty)
{
    EXPECT_EQ(Complaints({Save("empty", TBudget())}), QStringList());
}

TEST_F(TNorvexa_Schema_Test, Accepts_saved_numbers_of_any_size)
{
    TBudget budget;
    budget.input_data.machine_expansion_coefficient = std::numeric_limits<double>::max();
    budget.input_data.machine_scale = std::numeric_limits<double>::denorm_min();
    budget.input_data.temperature_minimum = std::numeric_limits<double>::lowest();
    budget.input_data.temperature_maximum = -0.0;

    EXPECT_EQ(Complaints({Save("numbers", budget)}), QStringList());
}

TEST_F(TNorvexa_Schema_Test, Accepts_what_was_loaded_from_versions_1_and_2_once_it_is_saved)
{
    for (const int version : {1, 2}) {
        QString error;
        const TBudget budget = Loaded_Budget(Golden_File(version), &error);
        ASSERT_EQ(error, "");

        EXPECT_EQ(Complaints({Save("saved", budget)}), QStringList()) << "version " << version;
    }
}

TEST_F(TNorvexa_Schema_Test, Accepts_the_described_example_which_comes_back_from_the_editor_as_it_is)
{
    const QRegularExpression block("```xml\\n(<\\?xml.*?)```", QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpression root("<Norvexa_Data [^>]*>");
    const QString file = Write("example", block.match(Content(DESCRIPTION)).captured(1));
    EXPECT_EQ(Complaints({file}), QStringList());

    QString error;
    const TBudget budget = Loaded_Budget(file, &error);
    ASSERT_EQ(error, "");
    EXPECT_EQ(Content(Save("saved", budget)).remove(root), Content(file).remove(root));
}

// What the reader refuses

struct TBrokenFile
{
    const char* name;
    const char* text;        ///< in the golden file
    const char* replacement; ///< everywhere
    QString complaint;       ///< of the schema
    QString error;           ///< of the reader
};

std::string Row_Name(const testing::TestParamInfo<TBrokenFile>& row)
{
    return row.param.name;
}

class TNorvexa_Schema_Table_Test : public TNorvexa_Schema_Test, public testing::WithParamInterface<TBrokenFile>
{
protected:
    QString Broken_File() const
    {
        const QString golden = Content(Golden_File(3));
        const QString broken = QString(golden).replace(GetParam().text, GetParam().replacement);

        EXPECT_NE(broken, golden);
        return Write("broken", broken);
    }
};

class TNorvexa_Schema_Refusal_Test : public TNorvexa_Schema_Table_Test
{};

TEST_P(TNorvexa_Schema_Refusal_Test, Refuses_what_the_reader_refuses)
{
    const QString file = Broken_File();

    EXPECT_THAT(Complaints({file}).join('\n').toStdString(), testing::HasSubstr(GetParam().complaint.toStdString()));
    EXPECT_EQ(Load(file), GetParam().error);
}

const QString UNSUPPORTED = "Norvexa_Data file version not supported";
const QString VERSION = "Element 'Norvexa_Data', attribute 'File_Version': [facet 'enumeration']";

const TBrokenFile REFUSED[] = {
    {"other_root", "Norvexa_Data", "Other", "Element 'Other': No matching global declaration",
     "ERR:  Identification 'Norvexa_Data' does not match 'Other'"},
    {"root_in_lower_case", "Norvexa_Data", "norvexa_data", "Element 'norvexa_data': No matching global declaration",
     "ERR:  Identification 'Norvexa_Data' does not match 'norvexa_data'"},
    {"no_version", "File_Version=\"3\"", "", "The attribute 'File_Version' is required but missing.",
     "ERR:  The 'File_Version' attribute is missing."},
    {"version_4", "File_Version=\"3\"", "File_Version=\"4\"", VERSION, UNSUPPORTED},
    {"version_with_a_point", "File_Version=\"3\"", "File_Version=\"3.0\"", VERSION, UNSUPPORTED},
    {"version_without_digits", "File_Version=\"3\"", "File_Version=\"\"", VERSION, UNSUPPORTED},
    {"no_components", "Components>", "Parts>", "Element 'Parts': This element is not expected.",
     Not_Found("Components", "Norvexa_Data")},
    {"no_report_groups", "Report_Groups>", "Groups>", "Element 'Groups': This element is not expected.",
     Not_Found("Report_Groups", "Norvexa_Data")},
    {"no_component_name", "<Name>Probe</Name>", "", "Element 'Mode': This element is not expected.",
     Not_Found("Name", "Component")},
    {"empty_component_name", "<Name>Probe</Name>", "<Name/>", "Element 'Name': [facet 'pattern']", No_Text("Name")},
    {"blank_component_name", "<Name>Probe</Name>", "<Name>&#160; </Name>", "Element 'Name': [facet 'pattern']",
     No_Text("Name")},
    {"no_mode", "<Mode>Sum</Mode>", "", "Element 'Export_Equipment': This element is not expected.",
     Not_Found("Mode", "Component")},
    {"misplaced_mode", "<Mode>Sum</Mode>", "<Identifiers><Mode>Sum</Mode></Identifiers>",
     "Element 'Identifiers': This element is not expected. Expected is ( Mode ).", Not_Found("Mode", "Component")},
    {"no_identifiers", "<Identifiers/>", "", "Element 'Component_Items': This element is not expected.",
     Not_Found("Identifiers", "Component")},
    {"empty_calibration_date", ">Mar 5 2021<", "><", "Element 'Calibration_Date': [facet 'pattern']",
     No_Text("Calibration_Date")},
    {"empty_expression", ">0.002<", "><", "Element 'Expression': [facet 'pattern']", No_Text("Expression")},
    {"no_distribution", "<Distribution>Step</Distribution>", "",
     "Element 'Expression_Type': This element is not expected.", Not_Found("Distribution", "Item")},
    {"empty_distribution", "<Distribution>Step</Distribution>", "<Distribution/>",
     "Element 'Distribution': [facet 'enumeration']", No_Text("Distribution")},
    {"empty_sensitivity", ">0.333333<", "><", "Element 'Sensitivity': ", No_Text("Sensitivity")},
    {"no_description", "<Description></Description>", "",
     "Element 'Variable': Missing child element(s). Expected is ( Description ).",
     Not_Found("Description", "Variable")},
    {"empty_group_item", "<Item>Scale</Item>", "<Item/>", "Element 'Item': [facet 'pattern']", No_Text("Item")},
    {"no_group_items", "<Items/>", "", "Element 'Group': Missing child element(s). Expected is ( Items ).",
     Not_Found("Items", "Group")},
    {"no_gradient", "<Temperature_Gradient>0.25</Temperature_Gradient>", "",
     "Element 'Report_Start': This element is not expected. Expected is ( Temperature_Gradient ).",
     Not_Found("Temperature_Gradient", "User_Input")},
    {"name_in_lower_case", "Machine_Scale>", "machine_scale>", "Element 'machine_scale': This element is not expected.",
     Not_Found("Machine_Scale", "User_Input")},
};

INSTANTIATE_TEST_SUITE_P(Files, TNorvexa_Schema_Refusal_Test, testing::ValuesIn(REFUSED), Row_Name);

class TNorvexa_Schema_Strictness_Test : public TNorvexa_Schema_Table_Test
{};

TEST_P(TNorvexa_Schema_Strictness_Test, Refuses_what_the_editor_never_writes_but_reads)
{
    const QString file = Broken_File();

    EXPECT_THAT(Complaints({file}).join('\n').toStdString(), testing::HasSubstr(GetParam().complaint.toStdString()));
    EXPECT_EQ(Load(file), "");
}

const TBrokenFile PASSED_OVER[] = {
    {"unknown_mode", ">Sum<", ">sum<", "Element 'Mode': [facet 'enumeration']", ""},
    {"unknown_flag", "<Export_Equipment>Yes<", "<Export_Equipment>true<",
     "Element 'Export_Equipment': [facet 'enumeration']", ""},
    {"unknown_length_flag", "<Limit_Uncertainty_Length>Yes<", "<Limit_Uncertainty_Length>1<",
     "Element 'Limit_Uncertainty_Length': [facet 'enumeration']", ""},
    {"unknown_default_flag", "<Use_Default_Expression>Yes<", "<Use_Default_Expression>YES<",
     "Element 'Use_Default_Expression': [facet 'enumeration']", ""},
    {"unknown_distribution", ">Step<", ">Gauss<", "Element 'Distribution': [facet 'enumeration']", ""},
    {"distribution_with_a_blank", ">Step<", ">Step <", "Element 'Distribution': [facet 'enumeration']", ""},
    {"unknown_expression_type", ">Constant Temperature<", ">Constant<",
     "Element 'Expression_Type': [facet 'enumeration']", ""},
    {"unknown_uncertainty_type", ">Type A<", ">A<", "Element 'Uncertainty_Type': [facet 'enumeration']", ""},
    {"decimal_comma", ">0.25<", ">0,25<", "Element 'Temperature_Gradient': '0,25' is not a valid value", ""},
    {"infinite_number", ">25.500000<", ">INF<", "Element 'Length': [facet 'pattern']", ""},
    {"number_too_large", ">500.125<", ">1e999<", "Element 'Report_End': [facet 'maxInclusive']", ""},
    {"negative_number_too_large", ">-1.000000<", ">-1e999<", "Element 'Length': [facet 'minInclusive']", ""},
    {"number_with_a_unit", ">500.125<", ">500.125 mm<", "Element 'Report_End': ", ""},
    {"another_order", "<Name>Scale</Name>\n            <Mode>Sum</Mode>", "<Mode>Sum</Mode><Name>Scale</Name>",
     "Element 'Mode': This element is not expected. Expected is ( Name ).", ""},
    {"repeated_element", "<Identifiers/>", "<Identifiers/><Identifiers/>",
     "Element 'Identifiers': This element is not expected. Expected is ( Component_Items ).", ""},
    {"unknown_element", "<Components>", "<Unknown/><Components>", "Element 'Unknown': This element is not expected.",
     ""},
    {"unknown_attribute", "<Components>", "<Components note=\"\">", "The attribute 'note' is not allowed.", ""},
    {"stray_text", "<Identifiers/>", "<Identifiers>none</Identifiers>", "Element 'Identifiers': Character content", ""},
    {"version_with_a_zero", "File_Version=\"3\"", "File_Version=\"03\"", VERSION, ""},
    {"no_revision", "File_Revision=\"Mar 05 2021\"", "", "The attribute 'File_Revision' is required but missing.", ""},
    {"revision_that_is_no_date", "\"Mar 05 2021\"", "\"2021-03-05\"", "attribute 'File_Revision': [facet 'pattern']",
     ""},
    {"no_report_start", "<Report_Start>0.000</Report_Start>", "",
     "Element 'Report_Increment': This element is not expected. Expected is ( Report_Start ).", ""},
    {"another_report_start", ">0.000<", ">5.000<", "Element 'Report_Start': [facet 'enumeration']", ""},
    {"namespace", "<Norvexa_Data ", "<Norvexa_Data xmlns=\"urn:budget\" ", "No matching global declaration", ""},
};

INSTANTIATE_TEST_SUITE_P(Files, TNorvexa_Schema_Strictness_Test, testing::ValuesIn(PASSED_OVER), Row_Name);

// A schema knows of text but not of where in its element it begins.
class TNorvexa_Schema_Blind_Spot_Test : public TNorvexa_Schema_Table_Test
{};

TEST_P(TNorvexa_Schema_Blind_Spot_Test, Accepts_a_text_that_the_reader_does_not_find)
{
    const QString file = Broken_File();

    EXPECT_EQ(Complaints({file}), QStringList());
    EXPECT_EQ(Load(file), GetParam().error);
}

const TBrokenFile NOT_FOUND[] = {
    {"comment_before_the_text", ">Scale<", "><!-- note -->Scale<", "", No_Text("Name")},
    {"instruction_before_the_text", ">Scale<", "><?note?>Scale<", "", No_Text("Name")},
};

INSTANTIATE_TEST_SUITE_P(Files, TNorvexa_Schema_Blind_Spot_Test, testing::ValuesIn(NOT_FOUND), Row_Name);

// All elements one after the other

namespace {

void Empty(QDomElement element)
{
    while (element.hasChildNodes()) {
        element.removeChild(element.firstChild());
    }
}

void Set_Text(QDomElement element, const QString& text)
{
    Empty(element);
    element.appendChild(element.ownerDocument().createTextNode(text));
}

using TChange = void (*)(const QDomElement& element);

void Remove(const QDomElement& element)
{
    element.parentNode().removeChild(element);
}

void Double(const QDomElement& element)
{
    element.parentNode().insertAfter(element.cloneNode(), element);
}

const struct
{
    const char* name;
    TChange change;
} CHANGES[] = {
    {"removed", Remove},
    {"doubled", Double},
    {"renamed", [](const QDomElement& element) { QDomElement(element).setTagName("Other"); }},
    {"moved to the front", [](const QDomElement& element) { element.parentNode().insertBefore(element, QDomNode()); }},
    {"moved to the end", [](const QDomElement& element) { element.parentNode().appendChild(element); }},
    {"emptied", [](const QDomElement& element) { Empty(element); }},
    {"blanked", [](const QDomElement& element) { Set_Text(element, " \u2003"); }},
    {"given another text", [](const QDomElement& element) { Set_Text(element, "7"); }},
};

QDomDocument Golden_Document()
{
    // Qt's parser crashes on characters beyond U+FFFF under the policy that the program sets.
    const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);
    QDomDocument document;
    EXPECT_TRUE(document.setContent(Content(Golden_File(3)), true));
    return document;
}

// The element and all below it, in document order.
QList<QDomElement> Elements(const QDomElement& element)
{
    QList<QDomElement> elements = {element};
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        elements += Elements(child);
    }
    return elements;
}

bool Is_In_List(const QDomElement& element)
{
    static const QStringList LISTS = {
        "Components", "Identifiers", "Component_Items", "Replacement_Items", "Variables", "Report_Groups", "Items"};
    return LISTS.contains(element.parentNode().nodeName());
}

} // namespace

class TNorvexa_Schema_Element_Test : public TNorvexa_Schema_Test
{
protected:
    QString Changed_File(int index, TChange change) const
    {
        const QDomDocument document = d_document.cloneNode().toDocument();
        change(Elements(document.documentElement()).at(index));
        return Write(QString::number(index), document.toString());
    }

    // One file for each element, in which that element alone is changed.
    QStringList Changed_Files(TChange change) const
    {
        QStringList files;
        for (int index = 0; index < d_elements.size(); ++index) {
            files << Changed_File(index, change);
        }
        return files;
    }

    const QDomDocument d_document = Golden_Document();
    const QList<QDomElement> d_elements = Elements(d_document.documentElement());
};

TEST_F(TNorvexa_Schema_Element_Test, Each_element_stands_once_and_those_of_lists_in_any_count)
{
    for (const TChange change : {Remove, Double}) {
        QStringList expected;
        for (int index = 0; index < d_elements.size(); ++index) {
            if (Is_In_List(d_elements.at(index))) {
                expected << File(QString::number(index));
            }
        }
        EXPECT_EQ(Valid(Changed_Files(change)), expected);
    }
}

TEST_F(TNorvexa_Schema_Element_Test, Accepts_nothing_that_the_reader_refuses_whatever_happens_to_an_element)
{
    int accepted = 0;

    for (const auto& [name, change] : CHANGES) {
        for (const QString& file : Valid(Changed_Files(change))) {
            EXPECT_EQ(Load(file), "") << "An element " << name << ":\n" << Content(file).toStdString();
            ++accepted;
        }
    }
    EXPECT_GT(accepted, 0);
}
