#include "src/norvexa.h"

#include "core/xmlfile.h"
#include "core/xmlpolicy.h"
#include "tests/support/childprocess.h"
#include "tests/support/qtprinters.h"
#include "tests/support/randombudget.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <utility>
#include <vector>

namespace {

QString Golden_File(int version)
{
    return QString("%1/budget_v%2.norvexa").arg(NORVEXA_TEST_DATA, QString::number(version));
}

QByteArray Content(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void Write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QString U(const char* text)
{
    return QString::fromUtf8(text);
}

TNorvexaData::TComponent Golden_Probe()
{
    TNorvexaData::TComponent probe;
    probe.name = "Probe";
    probe.mode = TNorvexaData::UC_MODE_INDIVIDUAL;
    probe.length = 25.5;
    probe.expansion_coefficient = 11.12 / 1000.0;
    probe.export_equipment = true;
    probe.limit_uncertainty_length = false;
    probe.instances = {{U("P-1 α"), "Mar 5 2021", "next year", 25.000125, 0.0005},
                       {U("P-2 😀"), "Jan 1 2020", "Jan 1 2022", -1.0, 0.01}};
    probe.items = {
        {U("Repeatability &lt; 1 µm"),
         "MSD / 1000",
         TNorvexaData::DISTRIBUTION_TRIANGULAR,
         TNorvexaData::CONSTANT_TEMPERATURE,
         TNorvexaData::UC_TYPE_A,
         0.333333,
         {{U("P-1 α"), "0.0002", false}, {U("P-2 😀"), "0.0001", true}}},
        {"Drift",
         "0.002",
         TNorvexaData::DISTRIBUTION_STEP,
         TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE,
         TNorvexaData::UC_TYPE_B,
         1.0,
         {}},
    };
    return probe;
}

TNorvexaData::TComponent Golden_Scale()
{
    TNorvexaData::TComponent scale;
    scale.name = "Scale";
    scale.limit_uncertainty_length = true;
    return scale;
}

// What the files in tests/data hold; those of versions 1 and 2 have no gradient.
TBudget Golden_Budget(double gradient)
{
    TBudget budget;
    budget.components = {Golden_Probe(), Golden_Scale()};
    budget.variables = {{"ProbeError", "Probe - Drift", -1, 0.0}, {"Unused", "", -1, 0.0}};
    budget.groups = {{"All", {"Scale", "Probe - Drift"}}, {"None", {}}};
    budget.input_data = {11.5, 0.0001, 19.5, 20.75, gradient, 12.5, 500.125};
    return budget;
}

QString Not_Found(const QString& name, const QString& parent)
{
    return QString("ERR:  Node '%1' is missing from node '%2' and not optional.").arg(name, parent);
}

QString No_Text(const QString& name)
{
    return QString("ERR:  Node Text for '%1' is not optional.").arg(name);
}

std::vector<std::pair<int, QString>> Versions_And_Lists()
{
    std::vector<std::pair<int, QString>> rows;
    for (const int version : {1, 2, 3}) {
        for (const char* list : {"Components", "Variables", "Report_Groups"}) {
            rows.emplace_back(version, list);
        }
    }
    return rows;
}

// Paths below the root, for literals to follow

#define COMPONENT "Components/Component/"
#define IDENTIFIER COMPONENT "Identifiers/Identifier/"
#define ITEM COMPONENT "Component_Items/Item/"
#define REPLACEMENT ITEM "Replacement_Items/Item/"

} // namespace

class TNorvexa_File_Test : public testing::Test
{
protected:
    TNorvexa_File_Test()
    {
        QFile::setPermissions(d_folder.path(), QFile::Permissions(0x7777));
        Parse(Golden_File(3));
    }

    void Parse(const QString& name)
    {
        // Qt's parser crashes on characters beyond U+FFFF under the policy that the program sets.
        const TXmlPolicy policy(QDomImplementation::AcceptInvalidChars);
        ASSERT_TRUE(d_document.setContent(Content(name), true)) << name.toStdString();
    }

    // Loads the edited document of version 3; returns the error text, empty on success.
    QString Load()
    {
        Write(d_name, d_document.toByteArray());
        return Load(d_name);
    }

    QString Load(const QString& name)
    {
        QString error;
        d_budget = Loaded_Budget(name, &error);
        return error;
    }

    QString Save(const TBudget& budget) { return Save_Budget(budget, d_name); }

    // The element at a path below the root, always the first of its name; null if there is none.
    QDomElement Element(const QString& path) const
    {
        QDomElement element = d_document.documentElement();
        for (const QString& name : path.split('/')) {
            element = element.firstChildElement(name);
        }
        return element;
    }

    void Remove(const QString& path) const
    {
        QDomElement element = Element(path);
        ASSERT_FALSE(element.isNull()) << path.toStdString();
        element.parentNode().removeChild(element);
    }

    void Set_Text(const QString& path, const QString& text) { Set_Content(path, d_document.createTextNode(text)); }
    void Set_Section(const QString& path, const QString& text)
    {
        Set_Content(path, d_document.createCDATASection(text));
    }

    void Set_Content(const QString& path, const QDomNode& content)
    {
        QDomElement element = Element(path);
        ASSERT_FALSE(element.isNull()) << path.toStdString();
        while (element.hasChildNodes()) {
            element.removeChild(element.firstChild());
        }
        if (!content.nodeValue().isEmpty()) {
            element.appendChild(content);
        }
    }

    // The text of an element in the saved file, as XML holds it.
    QString Saved_Text(const QString& path)
    {
        Parse(d_name);
        return Element(path).text();
    }

    QTemporaryDir d_folder;
    QString d_name = d_folder.filePath("budget.norvexa");
    QDomDocument d_document;
    TBudget d_budget;
};

// Loading

TEST_F(TNorvexa_File_Test, Loads_version_3)
{
    EXPECT_EQ(Load(Golden_File(3)), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Loads_versions_1_and_2_and_keeps_the_gradient)
{
    for (const int version : {1, 2}) {
        TNorvexa document;
        TBudget budget;
        budget.input_data.temperature_gradient = 7.5;

        EXPECT_TRUE(document.Load(Golden_File(version), &budget.variables, &budget.groups, &budget.input_data));
        budget.components = Components_Of(document);
        EXPECT_EQ(Description(budget), Description(Golden_Budget(7.5))) << "version " << version;
    }
}

TEST_F(TNorvexa_File_Test, Does_not_read_the_gradient_of_versions_1_and_2)
{
    for (const int version : {1, 2}) {
        d_document.documentElement().setAttribute("File_Version", version);

        EXPECT_EQ(Load(), "");
        EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.0))) << "version " << version;
    }
}

TEST_F(TNorvexa_File_Test, Requires_the_gradient_in_version_3)
{
    for (const int version : {1, 2}) {
        Parse(Golden_File(version));
        d_document.documentElement().setAttribute("File_Version", 3);

        EXPECT_EQ(Load(), Not_Found("Temperature_Gradient", "User_Input"));
    }
}

TEST_F(TNorvexa_File_Test, Refuses_other_versions)
{
    for (const char* version : {"0", "4", "-1", "33", "three", "", "3.0", "0x3"}) {
        d_document.documentElement().setAttribute("File_Version", version);

        EXPECT_EQ(Load(), "Norvexa_Data file version not supported") << version;
    }
}

TEST_F(TNorvexa_File_Test, Requires_a_version)
{
    d_document.documentElement().removeAttribute("File_Version");

    EXPECT_EQ(Load(), "ERR:  The 'File_Version' attribute is missing.");
}

TEST_F(TNorvexa_File_Test, Requires_its_root)
{
    d_document.documentElement().setTagName("Other");

    EXPECT_EQ(Load(), "ERR:  Identification 'Norvexa_Data' does not match 'Other'");
}

TEST_F(TNorvexa_File_Test, Reports_a_missing_file)
{
    EXPECT_EQ(Load(d_name), "ERR:  Cannot open file '" + d_name + "' for reading.");
}

TEST_F(TNorvexa_File_Test, Reports_a_folder)
{
    EXPECT_EQ(Load(d_folder.path()), "ERR:  Cannot open file: '" + d_folder.path() + "'.  Reason: not a regular file");
}

TEST_F(TNorvexa_File_Test, Reports_a_malformed_file)
{
    Write(d_name, "<Norvexa_Data>");

    EXPECT_TRUE(Load(d_name).startsWith("ERR:  Reference file XML parse error at line "));
}

TEST_F(TNorvexa_File_Test, Replaces_what_was_loaded_before)
{
    TNorvexa document;
    TBudget budget;

    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(document.Load(Golden_File(3), &budget.variables, &budget.groups, &budget.input_data));
    }
    budget.components = Components_Of(document);
    EXPECT_EQ(Description(budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Loads_components_of_the_same_name)
{
    const QDomElement component = Element("Components/Component");
    Element("Components").appendChild(component.cloneNode());

    EXPECT_EQ(Load(), "");
    TBudget expected = Golden_Budget(0.25);
    expected.components.push_back(Golden_Probe());
    EXPECT_EQ(Description(d_budget), Description(expected));
}

TEST_F(TNorvexa_File_Test, Passes_over_comments_and_unknown_elements)
{
    const QDomElement component = Element("Components/Component");
    Element("Components").insertBefore(d_document.createComment("note"), component);
    Element("Components").insertBefore(d_document.createElement("Unknown"), component);
    Element("Components/Component").insertBefore(d_document.createElement("Unknown"), component.firstChild());

    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Reads_an_unknown_enumeration_text_as_the_first_value)
{
    // The golden file has the first value of these three.
    Set_Text(COMPONENT "Limit_Uncertainty_Length", "Yes");
    Set_Text(ITEM "Uncertainty_Type", "Type B");
    Set_Text(REPLACEMENT "Use_Default_Expression", "Yes");
    EXPECT_EQ(Load(), "");
    TBudget expected = Golden_Budget(0.25);
    TNorvexaData::TComponent& probe = expected.components[0];
    probe.limit_uncertainty_length = true;
    probe.items[0].uc_type = TNorvexaData::UC_TYPE_B;
    probe.items[0].replacement_items[0].use_default_expression = true;
    EXPECT_EQ(Description(d_budget), Description(expected));

    for (const char* path :
         {COMPONENT "Mode", COMPONENT "Export_Equipment", COMPONENT "Limit_Uncertainty_Length", ITEM "Distribution",
          ITEM "Expression_Type", ITEM "Uncertainty_Type", REPLACEMENT "Use_Default_Expression"}) {
        Set_Text(path, "unknown");
    }
    EXPECT_EQ(Load(), "");
    probe.mode = TNorvexaData::UC_MODE_SUM;
    probe.export_equipment = false;
    probe.limit_uncertainty_length = false;
    probe.items[0].distribution = TNorvexaData::DISTRIBUTION_NORMAL;
    probe.items[0].expression_type = TNorvexaData::CONSTANT_LINEAR;
    probe.items[0].uc_type = TNorvexaData::UC_TYPE_A;
    probe.items[0].replacement_items[0].use_default_expression = false;
    EXPECT_EQ(Description(d_budget), Description(expected));
}

TEST_F(TNorvexa_File_Test, Ignores_the_report_start)
{
    Set_Text("User_Input/Report_Start", "100");
    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));

    Remove("User_Input/Report_Start");
    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Ignores_the_revision)
{
    d_document.documentElement().setAttribute("File_Revision", "no date");
    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));

    d_document.documentElement().removeAttribute("File_Revision");
    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Reads_a_number_with_all_its_digits)
{
    Set_Text(COMPONENT "Length", "-25.123456789012345");
    Set_Text(COMPONENT "Expansion_Coefficient", "11.123456");
    Set_Text("User_Input/Machine_Scale", "1.25e-7");

    EXPECT_EQ(Load(), "");
    TBudget expected = Golden_Budget(0.25);
    expected.components[0].length = -25.123456789012345;
    expected.components[0].expansion_coefficient = 11.123456 / 1000.0;
    expected.input_data.machine_scale = 1.25e-7;
    EXPECT_EQ(Description(d_budget), Description(expected));
}

TEST_F(TNorvexa_File_Test, Reads_a_number_with_white_space_around_it_and_a_plus_sign)
{
    Set_Text(COMPONENT "Length", " +25.5\n");

    EXPECT_EQ(Load(), "");
    EXPECT_EQ(Description(d_budget), Description(Golden_Budget(0.25)));
}

TEST_F(TNorvexa_File_Test, Loads_a_variable_without_a_description_text)
{
    Set_Text("Variables/Variable/Description", "");

    EXPECT_EQ(Load(), "");
    EXPECT_EQ(d_budget.variables.at(0).description, "");
}

TEST_F(TNorvexa_File_Test, Keeps_what_it_read_before_a_failure)
{
    QDomElement second_group = Element("Report_Groups/Group").nextSiblingElement();
    second_group.removeChild(second_group.firstChildElement("Name"));
    EXPECT_EQ(Load(), Not_Found("Name", "Group"));

    TBudget expected = Golden_Budget(0.25);
    expected.groups.pop_back();
    expected.input_data = TInputData();
    EXPECT_EQ(Description(d_budget), Description(expected));
}

TEST_F(TNorvexa_File_Test, Keeps_the_inputs_it_read_before_a_failure)
{
    Remove("User_Input/Temperature_Minimum");
    EXPECT_EQ(Load(), Not_Found("Temperature_Minimum", "User_Input"));

    TBudget expected = Golden_Budget(0.25);
    expected.input_data = TInputData();
    expected.input_data.machine_expansion_coefficient = 11.5;
    expected.input_data.machine_scale = 0.0001;
    EXPECT_EQ(Description(d_budget), Description(expected));
}

TEST_F(TNorvexa_File_Test, Keeps_the_former_records_but_no_component_when_their_list_is_missing)
{
    for (const auto& [version, list] : Versions_And_Lists()) {
        TNorvexa document;
        TBudget budget;
        ASSERT_TRUE(document.Load(Golden_File(3), &budget.variables, &budget.groups, &budget.input_data));
        Parse(Golden_File(version));
        Remove(list);
        Write(d_name, d_document.toByteArray());

        EXPECT_FALSE(document.Load(d_name, &budget.variables, &budget.groups, &budget.input_data));
        EXPECT_EQ(document.Last_Error(), Not_Found(list, "Norvexa_Data"));
        budget.components = Components_Of(document);
        TBudget expected = Golden_Budget(0.25);
        if (list == "Components") {
            expected.components.clear();
        }
        EXPECT_EQ(Description(budget), Description(expected)) << "version " << version << ", " << list.toStdString();
    }
}

TEST_F(TNorvexa_File_Test, Changes_nothing_when_the_file_is_refused_as_a_whole)
{
    TNorvexa document;
    TBudget budget;
    ASSERT_TRUE(document.Load(Golden_File(3), &budget.variables, &budget.groups, &budget.input_data));
    d_document.documentElement().setAttribute("File_Version", 4);
    Write(d_name, d_document.toByteArray());

    for (const QString& name : {d_name, d_folder.filePath("missing")}) {
        EXPECT_FALSE(document.Load(name, &budget.variables, &budget.groups, &budget.input_data));
        budget.components = Components_Of(document);
        EXPECT_EQ(Description(budget), Description(Golden_Budget(0.25))) << name.toStdString();
    }
}

TEST_F(TNorvexa_File_Test, Keeps_the_error_text_until_the_next_failure)
{
    TNorvexa document;
    TBudget budget;
    const auto load = [&](const QString& name) {
        return document.Load(name, &budget.variables, &budget.groups, &budget.input_data);
    };

    EXPECT_FALSE(load(d_name));
    EXPECT_TRUE(load(Golden_File(3)));
    EXPECT_TRUE(document.Save(d_name, budget.variables, budget.groups, budget.input_data));
    EXPECT_EQ(document.Last_Error(), "ERR:  Cannot open file '" + d_name + "' for reading.");

    const QString missing = d_folder.filePath("missing/budget.norvexa");
    EXPECT_FALSE(document.Save(missing, budget.variables, budget.groups, budget.input_data));
    EXPECT_EQ(document.Last_Error(), "ERR:  Cannot write file '" + missing + "'.  Reason: No such file or directory");
}

// The readers of the versions

TEST_F(TNorvexa_File_Test, Each_reader_reads_its_version_whatever_the_file_says)
{
    for (const auto reader : {&TNorvexa::LoadV1, &TNorvexa::LoadV2, &TNorvexa::LoadV3}) {
        TXmlFile xml_file;
        xml_file.Open_Data(Content(Golden_File(3)), "Norvexa_Data", nullptr, true);
        TNorvexa document;
        TBudget budget;
        budget.input_data.temperature_gradient = 7.5;

        (document.*reader)(&xml_file, &budget.variables, &budget.groups, &budget.input_data);
        budget.components = Components_Of(document);
        EXPECT_EQ(Description(budget), Description(Golden_Budget(reader == &TNorvexa::LoadV3 ? 0.25 : 7.5)));
    }
}

TEST_F(TNorvexa_File_Test, A_reader_throws_and_leaves_the_error_text_to_Load)
{
    TXmlFile xml_file;
    xml_file.Open_Data(Content(Golden_File(1)), "Norvexa_Data", nullptr, true);
    TNorvexa document;
    TBudget budget;

    EXPECT_THROW(document.LoadV3(&xml_file, &budget.variables, &budget.groups, &budget.input_data), TXmlFileException);
    EXPECT_EQ(document.Last_Error(), "");
}

// Elements and texts that are required

class TNorvexa_Required_Element_Test : public TNorvexa_File_Test, public testing::WithParamInterface<const char*>
{};

class TNorvexa_Required_Text_Test : public TNorvexa_File_Test, public testing::WithParamInterface<const char*>
{};

class TNorvexa_Number_Test : public TNorvexa_File_Test, public testing::WithParamInterface<const char*>
{};

std::string Path_Name(const testing::TestParamInfo<const char*>& row)
{
    return QString(row.param).replace('/', '_').toStdString();
}

const char* const CONTAINERS[] = {
    "Components",
    COMPONENT "Identifiers",
    COMPONENT "Component_Items",
    ITEM "Replacement_Items",
    "Variables",
    "Report_Groups",
    "Report_Groups/Group/Items",
    "User_Input",
    "Variables/Variable/Description",
};

const char* const TEXTS[] = {
    COMPONENT "Name",
    COMPONENT "Mode",
    COMPONENT "Export_Equipment",
    COMPONENT "Limit_Uncertainty_Length",
    IDENTIFIER "Name",
    IDENTIFIER "Calibration_Date",
    IDENTIFIER "Calibration_Due_Date",
    ITEM "Name",
    ITEM "Expression",
    ITEM "Distribution",
    ITEM "Expression_Type",
    ITEM "Uncertainty_Type",
    REPLACEMENT "Identifier",
    REPLACEMENT "Expression",
    REPLACEMENT "Use_Default_Expression",
    "Variables/Variable/Name",
    "Report_Groups/Group/Name",
};

const char* const NUMBERS[] = {
    COMPONENT "Length",
    COMPONENT "Expansion_Coefficient",
    IDENTIFIER "Length",
    IDENTIFIER "Expansion_Coefficient",
    ITEM "Sensitivity",
    "User_Input/Machine_Expansion_Coefficient",
    "User_Input/Machine_Scale",
    "User_Input/Temperature_Minimum",
    "User_Input/Temperature_Maximum",
    "User_Input/Temperature_Gradient",
    "User_Input/Report_Increment",
    "User_Input/Report_End",
};

TEST_P(TNorvexa_Required_Element_Test, Is_reported_when_it_is_missing)
{
    const QStringList path = QString(GetParam()).split('/');
    const QString parent = path.size() > 1 ? path.at(path.size() - 2) : QString("Norvexa_Data");
    Remove(GetParam());

    EXPECT_EQ(Load(), Not_Found(path.last(), parent));
}

// Of several that are missing the first is reported: they are read in the order in which they are written.
TEST_P(TNorvexa_Required_Element_Test, Is_reported_before_those_that_follow_it)
{
    const QDomElement element = Element(GetParam());
    ASSERT_FALSE(element.isNull());
    QDomNode parent = element.parentNode();
    while (!element.nextSibling().isNull()) {
        parent.removeChild(element.nextSibling());
    }
    parent.removeChild(element);

    EXPECT_EQ(Load(), Not_Found(element.tagName(), parent.toElement().tagName()));
}

TEST_P(TNorvexa_Required_Text_Test, Is_reported_when_it_is_empty_or_blank)
{
    const QString name = QString(GetParam()).section('/', -1);

    for (const QString& text : {QString(), QString("  "), QString(QChar(QChar::Nbsp))}) {
        Set_Text(GetParam(), text);
        EXPECT_EQ(Load(), No_Text(name));
    }
}

// The parser keeps blanks there; saved as text they would be lost, and the file would not load.
TEST_P(TNorvexa_Required_Text_Test, Is_reported_when_it_is_blank_in_a_section)
{
    for (const QString& text : {QString(" "), QString("\n\t"), QString(QChar(QChar::Nbsp))}) {
        Set_Section(GetParam(), text);
        EXPECT_EQ(Load(), No_Text(QString(GetParam()).section('/', -1)));
    }
}

// The number of an element wherever it lands in the record: the description of the budget, one line different.
TEST_P(TNorvexa_Number_Test, Counts_as_0_when_it_is_no_finite_number)
{
    Set_Text(GetParam(), "0");
    ASSERT_EQ(Load(), "");
    const QStringList with_0 = Description(d_budget);
    ASSERT_NE(with_0, Description(Golden_Budget(0.25)));

    for (const char* text : {"number", "1,5", "nan", "inf", "-inf", "1e999", "1 2"}) {
        Set_Text(GetParam(), text);
        EXPECT_EQ(Load(), "") << text;
        EXPECT_EQ(Description(d_budget), with_0) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, TNorvexa_Required_Element_Test, testing::ValuesIn(CONTAINERS), Path_Name);
INSTANTIATE_TEST_SUITE_P(Texts, TNorvexa_Required_Element_Test, testing::ValuesIn(TEXTS), Path_Name);
INSTANTIATE_TEST_SUITE_P(Numbers, TNorvexa_Required_Element_Test, testing::ValuesIn(NUMBERS), Path_Name);
INSTANTIATE_TEST_SUITE_P(Texts, TNorvexa_Required_Text_Test, testing::ValuesIn(TEXTS), Path_Name);
INSTANTIATE_TEST_SUITE_P(Numbers, TNorvexa_Required_Text_Test, testing::ValuesIn(NUMBERS), Path_Name);
INSTANTIATE_TEST_SUITE_P(Numbers, TNorvexa_Number_Test, testing::ValuesIn(NUMBERS), Path_Name);

TEST_F(TNorvexa_File_Test, Requires_a_text_of_each_group_item)
{
    Set_Text("Report_Groups/Group/Items/Item", "");
    EXPECT_EQ(Load(), No_Text("Item"));

    Set_Section("Report_Groups/Group/Items/Item", " ");
    EXPECT_EQ(Load(), No_Text("Item"));
}

TEST_F(TNorvexa_File_Test, Reads_texts_in_sections)
{
    Set_Section("Components/Component/Name", "A & B");
    Set_Section("Variables/Variable/Description", " ");

    EXPECT_EQ(Load(), "");
    EXPECT_EQ(d_budget.components.front().name, "A & B");
    EXPECT_EQ(d_budget.variables.front().description, "");
}

// Saving

TEST_F(TNorvexa_File_Test, Saves_the_golden_file_as_it_is)
{
    TBudget budget = Golden_Budget(0.25);
    budget.components[0].items[0].name = U("Repeatability < 1 µm");
    ASSERT_EQ(Save(budget), "");

    const auto lines = [](const QString& name) {
        QStringList all = QString::fromUtf8(Content(name)).split('\n');
        EXPECT_TRUE(all.value(1).startsWith("<Norvexa_Data File_"));
        // The root carries the date of saving, and its attributes stand in any order.
        all.removeAt(1);
        return all;
    };
    EXPECT_EQ(lines(d_name), lines(Golden_File(3)));
}

TEST_F(TNorvexa_File_Test, Saves_a_small_budget_byte_for_byte)
{
    TNorvexa document;
    ASSERT_TRUE(document.Add_Component("A&B"));
    ASSERT_TRUE(document.Add_Component_Item("A&B", "Item"));

    const QByteArray body = R"(
    <Components>
        <Component>
            <Name>A&amp;amp;B</Name>
            <Mode>Sum</Mode>
            <Export_Equipment>No</Export_Equipment>
            <Limit_Uncertainty_Length>No</Limit_Uncertainty_Length>
            <Length>0.000000</Length>
            <Expansion_Coefficient>10.00</Expansion_Coefficient>
            <Identifiers/>
            <Component_Items>
                <Item>
                    <Name>Item</Name>
                    <Expression>0.0000</Expression>
                    <Distribution>Normal</Distribution>
                    <Expression_Type>Constant Linear</Expression_Type>
                    <Uncertainty_Type>Type B</Uncertainty_Type>
                    <Sensitivity>1.000000</Sensitivity>
                    <Replacement_Items/>
                </Item>
            </Component_Items>
        </Component>
    </Components>
    <Variables/>
    <Report_Groups/>
    <User_Input>
        <Machine_Expansion_Coefficient>11.50</Machine_Expansion_Coefficient>
        <Machine_Scale>0.001000</Machine_Scale>
        <Temperature_Minimum>20.00</Temperature_Minimum>
        <Temperature_Maximum>20.00</Temperature_Maximum>
        <Temperature_Gradient>0.00</Temperature_Gradient>
        <Report_Start>0.000</Report_Start>
        <Report_Increment>50.000</Report_Increment>
        <Report_End>1000.000</Report_End>
    </User_Input>
</Norvexa_Data>
)";
    const auto file = [&](const QDate& date, bool version_first) {
        const QString revision = QString("File_Revision=\"%1\"").arg(QLocale::c().toString(date, "MMM dd yyyy"));
        const QString version = "File_Version=\"3\"";
        const QString root = version_first ? version + ' ' + revision : revision + ' ' + version;
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Norvexa_Data " + root.toUtf8() + ">" + body;
    };

    const QDate before = QDate::currentDate();
    ASSERT_TRUE(document.Save(d_name, {}, {}, TInputData{11.5, 0.001, 20.0, 20.0, 0.0, 50.0, 1000.0}));
    const QDate after = QDate::currentDate();

    const QByteArray saved = Content(d_name);
    EXPECT_TRUE(saved == file(before, true) || saved == file(before, false) || saved == file(after, true) ||
                saved == file(after, false))
        << saved.constData();
}

TEST_F(TNorvexa_File_Test, Saves_an_English_date_under_every_locale)
{
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QDate before = QDate::currentDate();
    ASSERT_EQ(Save(Golden_Budget(0.25)), "");
    const QDate after = QDate::currentDate();
    QLocale::setDefault(former);

    Parse(d_name);
    const QStringList months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto text = [&](const QDate& date) { return months.at(date.month() - 1) + date.toString(" dd yyyy"); };
    const QString revision = d_document.documentElement().attribute("File_Revision");
    EXPECT_TRUE(revision == text(before) || revision == text(after)) << revision.toStdString();
    EXPECT_EQ(Saved_Text("User_Input/Temperature_Maximum"), "20.75");
}

// Qt reads the system's locale once, so a process of its own runs the test that compares a whole file.
TEST_F(TNorvexa_File_Test, Saves_the_same_bytes_under_a_Japanese_system)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "ja_JP.UTF-8");
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=TNorvexa_File_Test.Saves_a_small_*"});

    ASSERT_TRUE(process.waitForFinished());
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.exitCode(), 0) << output.constData();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test.")) << output.constData();
}

TEST_F(TNorvexa_File_Test, Saves_each_enumeration_text)
{
    TBudget budget = Golden_Budget(0.0);
    const QStringList distributions = {"Normal", "Rectangular", "Triangular", "U", "Step"};
    const QStringList types = {"Constant Linear", "Constant Temperature", "Length Dependent Linear",
                               "Length Dependent Temperature"};

    for (int value = 0; value < 5; ++value) {
        TNorvexaData::TComponent& probe = budget.components[0];
        probe.mode = static_cast<TNorvexaData::TUCMode>(value % 2);
        probe.export_equipment = value % 2 == 1;
        probe.limit_uncertainty_length = value % 2 == 0;
        probe.items[0].distribution = static_cast<TNorvexaData::TDistribution>(value);
        probe.items[0].expression_type = static_cast<TNorvexaData::TExpressionType>(value % 4);
        probe.items[0].uc_type = static_cast<TNorvexaData::TUCType>(value % 2);
        ASSERT_EQ(Save(budget), "");

        EXPECT_EQ(Saved_Text(COMPONENT "Mode"), value % 2 == 1 ? "Individual" : "Sum");
        EXPECT_EQ(Saved_Text(COMPONENT "Export_Equipment"), value % 2 == 1 ? "Yes" : "No");
        EXPECT_EQ(Saved_Text(COMPONENT "Limit_Uncertainty_Length"), value % 2 == 1 ? "No" : "Yes");
        EXPECT_EQ(Saved_Text(ITEM "Distribution"), distributions.at(value));
        EXPECT_EQ(Saved_Text(ITEM "Expression_Type"), types.at(value % 4));
        EXPECT_EQ(Saved_Text(ITEM "Uncertainty_Type"), value % 2 == 1 ? "Type B" : "Type A");
    }
}

TEST_F(TNorvexa_File_Test, Keeps_five_decimals_of_an_expansion_coefficient)
{
    TBudget budget = Golden_Budget(0.0);
    budget.components[0].expansion_coefficient = 0.0111234;
    budget.components[0].instances[0].expansion_coefficient = 0.0111234;
    ASSERT_EQ(Save(budget), "");

    EXPECT_EQ(Saved_Text(COMPONENT "Expansion_Coefficient"), "11.12");
    EXPECT_EQ(Saved_Text(IDENTIFIER "Expansion_Coefficient"), "11.12");
    ASSERT_EQ(Load(d_name), "");
    EXPECT_DOUBLE_EQ(d_budget.components[0].expansion_coefficient, 0.01112);
    EXPECT_DOUBLE_EQ(d_budget.components[0].instances[0].expansion_coefficient, 0.01112);
}

TEST_F(TNorvexa_File_Test, Does_not_scale_the_coefficient_of_the_machine)
{
    TBudget budget = Golden_Budget(0.0);
    budget.input_data.machine_expansion_coefficient = 11.5;
    ASSERT_EQ(Save(budget), "");

    EXPECT_EQ(Saved_Text("User_Input/Machine_Expansion_Coefficient"), "11.50");
}

TEST_F(TNorvexa_File_Test, Writes_a_name_escaped_twice_and_loads_it_escaped_once)
{
    TBudget budget = Golden_Budget(0.0);
    budget.components[1].name = "A&B";
    budget.groups[0].items = QStringList{"<\"A'&B\">"};
    budget.variables[0].description = "a > b";
    ASSERT_EQ(Save(budget), "");

    EXPECT_TRUE(Content(d_name).contains("<Name>A&amp;amp;B</Name>"));
    ASSERT_EQ(Load(d_name), "");
    EXPECT_EQ(d_budget.components.at(1).name, "A&amp;B");
    EXPECT_EQ(d_budget.groups.at(0).items, QStringList("&lt;&quot;A'&amp;B&quot;&gt;"));
    EXPECT_EQ(d_budget.variables.at(0).description, "a &gt; b");
}

TEST_F(TNorvexa_File_Test, Saves_and_loads_an_empty_component)
{
    TBudget budget;
    budget.components = {Golden_Scale()};
    ASSERT_EQ(Save(budget), "");

    EXPECT_TRUE(Content(d_name).contains("<Identifiers/>\n            <Component_Items/>\n"));
    ASSERT_EQ(Load(d_name), "");
    EXPECT_EQ(Description(d_budget), Description(budget));
}

TEST_F(TNorvexa_File_Test, Does_not_save_what_it_could_not_load)
{
    TBudget budget = Golden_Budget(0.0);
    ASSERT_EQ(Save(budget), "");
    const QByteArray former = Content(d_name);
    const QString illegal = QString("a%1") + QChar(0x7);
    budget.groups[0].name = illegal;

    EXPECT_EQ(Save(budget), "ERR:  Cannot write node 'Name' with data '" + illegal + "'");
    EXPECT_EQ(Content(d_name), former);
}

TEST_F(TNorvexa_File_Test, Reports_a_file_that_may_not_be_written)
{
    Write(d_name, "former");
    QFile::setPermissions(d_name, QFile::Permissions(0x4444));

    EXPECT_EQ(As_Plain_User([&] { return Save(Golden_Budget(0.0)); }),
              "ERR:  Cannot open file '" + d_name + "' for writing");
    EXPECT_EQ(Content(d_name), "former");
}

TEST_F(TNorvexa_File_Test, Reports_a_folder_that_is_missing)
{
    const QString name = d_folder.filePath("missing/budget.norvexa");

    EXPECT_EQ(Save_Budget(Golden_Budget(0.0), name),
              "ERR:  Cannot write file '" + name + "'.  Reason: No such file or directory");
}

TEST_F(TNorvexa_File_Test, Keeps_the_former_file_when_it_cannot_be_written_whole)
{
    Write(d_name, "former");
    const auto save = [&]() -> QString {
        const struct rlimit limit = {1000, RLIM_INFINITY};
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 ? Save(Golden_Budget(0.0)) : QString("no limit set");
    };

    EXPECT_EQ(In_Child(save), "ERR:  Cannot write file '" + d_name + "'.  Reason: File too large");
    EXPECT_EQ(Content(d_name), "former");
    EXPECT_EQ(QDir(d_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("budget.norvexa"));
}

// A walk that is not linear would take many minutes, more than a test has.
TEST_F(TNorvexa_File_Test, Saves_and_loads_a_large_budget)
{
    TBudget budget = Golden_Budget(0.0);
    budget.components.resize(20'000, Golden_Probe());

    ASSERT_EQ(Save(budget), "");
    ASSERT_EQ(Load(d_name), "");
    EXPECT_EQ(d_budget.components.size(), 20'000U);
}

// Null pointers

TEST(TNorvexa_File_Death_Test, Aborts_on_a_null_pointer)
{
    const QString name = Golden_File(3);
    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;
    TNorvexa document;
    const std::string source = "\\.\\./src/norvexa\\.cpp: ";

    EXPECT_DEATH(document.Load(name, nullptr, &groups, &input_data), source + "Load: variables");
    EXPECT_DEATH(document.Load(name, &variables, nullptr, &input_data), source + "Load: groups");
    EXPECT_DEATH(document.Load(name, &variables, &groups, nullptr), source + "Load: input_data");
    EXPECT_DEATH(document.LoadV1(nullptr, &variables, &groups, &input_data), source + "LoadV1: xml_file");
    EXPECT_DEATH(document.LoadV2(nullptr, &variables, &groups, &input_data), source + "LoadV2: xml_file");
    EXPECT_DEATH(document.LoadV3(nullptr, &variables, &groups, &input_data), source + "LoadV3: xml_file");
}
