#include "core/number.h"
#include "src/norvexa.h"
#include "tests/support/qtprinters.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace {

/// The identifier chosen for each component; a component that is missing here stands for itself.
using TIdentifiers = std::map<QString, QString>;

constexpr std::size_t BUILT_IN_VARIABLES = 10;

QString Example_File(const QString& name)
{
    return QStringLiteral(NORVEXA_EXAMPLES "/%1.norvexa").arg(name);
}

QString File_Text(const QString& file_name)
{
    QFile file(file_name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString Identifier_Of(const TIdentifiers& identifiers, const QString& component)
{
    const auto found = identifiers.find(component);
    return found == identifiers.end() ? QString() : found->second;
}

int Decimals(const QString& number)
{
    return number.size() - number.indexOf('.') - 1;
}

double Length_Count(double component_length, double length)
{
    return component_length > 0.0 ? std::trunc(length / (component_length * 1.001)) : 0.0;
}

/// An example budget with a walk of its own over the items of a report group.
class TExample
{
public:
    explicit TExample(const QString& name)
        : d_is_loaded(d_document.Load(Example_File(name), &d_variables, &d_groups, &d_input))
    {}

    bool Is_Loaded() const { return d_is_loaded; }
    const TNorvexa& Document() const { return d_document; }
    const std::vector<TVariable>& Variables() const { return d_variables; }
    const std::vector<TGroup>& Groups() const { return d_groups; }
    const TInputData& Input() const { return d_input; }

    QStringList Members(const QString& group) const
    {
        for (const TGroup& candidate : d_groups) {
            if (candidate.name == group) {
                return candidate.items;
            }
        }
        ADD_FAILURE() << "No such group: " << group.toStdString();
        return {};
    }

    /// The items that a member of a group stands for.
    QStringList Items(const QString& reportable, QString* component) const
    {
        QString item;
        EXPECT_TRUE(d_document.Convert_From_Reportable(reportable, component, &item)) << reportable.toStdString();
        return item.isEmpty() ? d_document.Enum_Component_Items(*component) : QStringList(item);
    }

    /// The root of the sum of squares over the items of the group.
    double Combined(const QString& group, const TIdentifiers& identifiers, double length)
    {
        double sum_of_squares = 0.0;
        for (const QString& member : Members(group)) {
            QString component;
            for (const QString& item : Items(member, &component)) {
                const double value = Item_Value(component, item, identifiers, length);
                sum_of_squares += value * value;
            }
        }
        return std::sqrt(sum_of_squares);
    }

    double Item_Value(const QString& component, const QString& item, const TIdentifiers& identifiers, double length)
    {
        const QString identifier = Identifier_Of(identifiers, component);
        Set_Global_Variables();
        Set_User_Variables(identifiers, length);
        Set_Local_Variables(component, identifier, length);
        bool valid = false;
        const double value = d_document.Evaluate_Component_Item(component, item, identifier, length, &valid);
        EXPECT_TRUE(valid) << component.toStdString() << ": " << item.toStdString();
        return value;
    }

private:
    void Set_Global_Variables()
    {
        const double mean_temperature = (d_input.temperature_minimum + d_input.temperature_maximum) * 0.5;
        d_document.Reset_Expression_Variables();
        d_document.Add_Expression_Variable("CTEm", d_input.machine_expansion_coefficient / 1000.0);
        d_document.Add_Expression_Variable("Sr", d_input.machine_scale);
        d_document.Add_Expression_Variable("Td", std::abs(mean_temperature - 20.0));
        d_document.Add_Expression_Variable("Tr", std::abs(d_input.temperature_maximum - d_input.temperature_minimum));
        d_document.Add_Expression_Variable("Tg", std::abs(d_input.temperature_gradient));
        d_document.Add_Expression_Variable("Sdev", 0.0);
    }

    void Set_User_Variables(const TIdentifiers& identifiers, double length)
    {
        for (std::size_t i = BUILT_IN_VARIABLES; i < d_variables.size(); ++i) {
            const QString reportable = d_variables[i].description;
            QString component;
            Items(reportable, &component);
            bool valid = false;
            const double value = d_document.Evaluate_Reportable_Component(
                reportable, Identifier_Of(identifiers, component), length, &valid);
            EXPECT_TRUE(valid) << reportable.toStdString();
            d_document.Add_Expression_Variable(d_variables[i].name, value);
        }
    }

    void Set_Local_Variables(const QString& component, const QString& identifier, double length)
    {
        const double coefficient = d_document.Component_Expansion_Coefficient(component, identifier);
        const double machine_coefficient = d_input.machine_expansion_coefficient / 1000.0;
        const double component_length = d_document.Component_Length(component, identifier);
        d_document.Add_Expression_Variable("CTEd", std::abs(coefficient - machine_coefficient));
        d_document.Add_Expression_Variable("CTEc", coefficient);
        d_document.Add_Expression_Variable("Lc", Length_Count(component_length, length));
        d_document.Add_Expression_Variable("L", length);
    }

    TNorvexa d_document;
    std::vector<TVariable> d_variables;
    std::vector<TGroup> d_groups;
    TInputData d_input;
    bool d_is_loaded;
};

/// The end of a test's name.
std::string Name_Of(const QString& text)
{
    QString name = text;
    return name.replace(QRegularExpression("[^A-Za-z0-9]+"), "_").toStdString();
}

} // namespace

// Combined uncertainties

namespace {

struct TCombinedFigure
{
    QString name;
    QString example;
    QString group;
    TIdentifiers identifiers;
    double length;
    QString expected; ///< mm, or C for a group of temperatures, with all the digits that the source gives
};

void PrintTo(const TCombinedFigure& figure, std::ostream* stream)
{
    *stream << figure.name.toStdString() << ": " << figure.expected.toStdString();
}

std::vector<TCombinedFigure> End_Gauge_Figures()
{
    const QString example = "gum_h1_end_gauge";
    const QString first_order = "Length to first order";
    const QString second_order = "Length with second-order terms";
    return {{"published 32 nm", example, first_order, {}, 50.0, "0.000032"},
            {"32 nm from the figures", example, first_order, {}, 50.0, "0.000031664"},
            {"to first order at half the length", example, first_order, {}, 25.0, "0.000028102"},
            {"to first order without length", example, first_order, {}, 0.0, "0.000026809"},
            {"to first order on the status line", example, first_order, {}, 50.0, "0.0000"},
            {"published 34 nm", example, second_order, {}, 50.0, "0.000034"},
            {"34 nm from the figures", example, second_order, {}, 50.0, "0.000033806"},
            {"second order at half the length", example, second_order, {}, 25.0, "0.000028719"},
            {"second order without length", example, second_order, {}, 0.0, "0.000026809"},
            {"second order on the status line", example, second_order, {}, 50.0, "0.0000"},
            {"published u(d) of 9.7 nm", example, "Measured difference", {}, 50.0, "0.0000097"},
            {"u(d) from the figures", example, "Measured difference", {}, 50.0, "0.00000968"},
            {"u(d) without length", example, "Measured difference", {}, 0.0, "0.00000968"},
            {"published u(q) of 0.41 C", example, "Temperature of the bed", {}, 50.0, "0.41"},
            {"u(q) from the figures", example, "Temperature of the bed", {}, 50.0, "0.4062"},
            {"u(q) without length", example, "Temperature of the bed", {}, 0.0, "0.4062"}};
}

std::vector<TCombinedFigure> Calliper_Figures()
{
    const QString example = "ea402_s10_vernier_calliper";
    const QString error = "Error of indication";
    return {{"at 0 mm", example, error, {}, 0.0, "0.032278166"},
            {"at 25 mm", example, error, {}, 25.0, "0.032279873"},
            {"at 50 mm", example, error, {}, 50.0, "0.032284994"},
            {"at 100 mm", example, error, {}, 100.0, "0.032305469"},
            {"at 150 mm", example, error, {}, 150.0, "0.032339566"},
            {"in micrometres", example, error, {}, 150.0, "0.03234"},
            {"on the status line", example, error, {}, 150.0, "0.0323"},
            {"calliper at 0 mm", example, "Calliper alone", {}, 0.0, "0.032274861"},
            {"calliper at 150 mm", example, "Calliper alone", {}, 150.0, "0.032274861"},
            {"expansion at 0 mm", example, "Thermal expansion alone", {}, 0.0, "0.000000000"},
            {"expansion at 150 mm", example, "Thermal expansion alone", {}, 150.0, "0.001991858"},
            {"published expansion of 2.0 um", example, "Thermal expansion alone", {}, 150.0, "0.0020"},
            {"published temperature of 1.15 C", example, "Temperature", {}, 150.0, "1.15"}};
}

std::vector<TCombinedFigure> Tape_Figures()
{
    const QString example = "npl_tape_string";
    const QString string = "Length of the string";
    return {{"calibration taken as 5.0 mm", example, string, {}, 5000.0, "6.333"},
            {"at the mean of the readings", example, string, {}, 5017.0, "6.336422"},
            {"on the status line", example, string, {}, 5017.0, "6.3364"},
            {"at 1000 mm", example, string, {}, 1000.0, "5.840177"},
            {"at 10000 mm", example, string, {}, 10000.0, "7.671875"},
            {"tape at 0 mm", example, "Tape alone", {}, 0.0, "0.288675"},
            {"tape at 5000 mm", example, "Tape alone", {}, 5000.0, "2.516611"},
            {"string at 0 mm", example, "String alone", {}, 0.0, "5.811569"},
            {"string at 5000 mm", example, "String alone", {}, 5000.0, "5.811569"}};
}

/// A column of the machine's table: a group and the identifiers that are chosen for it.
struct TMachineColumn
{
    QString name;
    QString group;
    TIdentifiers identifiers;
    std::size_t figure; ///< which of the row's figures stands in this column
};

struct TMachineRow
{
    double length;
    std::array<const char*, 8> figures;
};

const std::vector<TMachineColumn>& Machine_Columns()
{
    static const QString WORKPIECE = "Workpiece on the machine";
    static const std::vector<TMachineColumn> COLUMNS = {
        {"default identifiers", WORKPIECE, {}, 0},
        {"default identifiers by name", WORKPIECE, {{"CMM", "[Default]"}, {"Workpiece", "[Default]"}}, 0},
        {"CMM 1 Steel shaft", WORKPIECE, {{"CMM", "CMM 1"}, {"Workpiece", "Steel shaft"}}, 0},
        {"CMM 2 Steel shaft", WORKPIECE, {{"CMM", "CMM 2"}, {"Workpiece", "Steel shaft"}}, 1},
        {"CMM 1 Aluminium frame", WORKPIECE, {{"CMM", "CMM 1"}, {"Workpiece", "Aluminium frame"}}, 2},
        {"CMM 1 Silicon artefact", WORKPIECE, {{"CMM", "CMM 1"}, {"Workpiece", "Silicon artefact"}}, 3},
        {"Machine alone", "Machine alone", {}, 4},
        {"Machine and probing", "Machine and probing", {}, 5},
        {"Workpiece only", "Workpiece only", {}, 6},
        {"Temperature", "Temperature", {}, 7}};
    return COLUMNS;
}

const std::vector<TMachineRow>& Machine_Rows()
{
    // Steel shaft on CMM 1, on CMM 2, aluminium frame, silicon artefact; machine, with probing, workpiece; temperature
    static const std::vector<TMachineRow> ROWS = {{0.0,
                                                   {"0.001309262", "0.001127682", "0.001309262", "0.001309262",
                                                    "0.001069657", "0.001309262", "0.000000000", "0.358236421"}},
                                                  {50.0,
                                                   {"0.001331767", "0.001147215", "0.001349221", "0.001340578",
                                                    "0.001096206", "0.001331040", "0.000043993", "0.358236421"}},
                                                  {100.0,
                                                   {"0.001355941", "0.001168792", "0.001423289", "0.001390240",
                                                    "0.001122868", "0.001353083", "0.000087987", "0.358236421"}},
                                                  {250.0,
                                                   {"0.001437609", "0.001244676", "0.001799049", "0.001629547",
                                                    "0.001203467", "0.001420681", "0.000219967", "0.358236421"}},
                                                  {300.0,
                                                   {"0.001481162", "0.001288930", "0.001969375", "0.001744012",
                                                    "0.001230515", "0.001443664", "0.000263960", "0.358236421"}},
                                                  {500.0,
                                                   {"0.001611741", "0.001416054", "0.002697618", "0.001822519",
                                                    "0.001339465", "0.001537585", "0.000439934", "0.358236421"}},
                                                  {750.0,
                                                   {"0.001807522", "0.001612338", "0.003714279", "0.001936253",
                                                    "0.001477047", "0.001658815", "0.000659901", "0.358236421"}},
                                                  {800.0,
                                                   {"0.001857319", "0.001663470", "0.003927975", "0.001967632",
                                                    "0.001504715", "0.001683498", "0.000703894", "0.358236421"}},
                                                  {900.0,
                                                   {"0.001936812", "0.001743199", "0.003949555", "0.002010367",
                                                    "0.001560182", "0.001733253", "0.000791881", "0.358236421"}},
                                                  {1000.0,
                                                   {"0.002018663", "0.001825514", "0.003971858", "0.002053836",
                                                    "0.001615807", "0.001783489", "0.000879867", "0.358236421"}}};
    return ROWS;
}

std::vector<TCombinedFigure> Machine_Figures()
{
    std::vector<TCombinedFigure> figures;
    for (const TMachineColumn& column : Machine_Columns()) {
        for (const TMachineRow& row : Machine_Rows()) {
            figures.push_back({QString("%1 at %2 mm").arg(column.name, Fixed_Text(row.length, 0)), "cmm_length_0_1000",
                               column.group, column.identifiers, row.length, row.figures.at(column.figure)});
        }
    }
    return figures;
}

class Combined : public testing::TestWithParam<TCombinedFigure>
{};

std::string Combined_Name(const testing::TestParamInfo<TCombinedFigure>& info)
{
    return Name_Of(info.param.name);
}

} // namespace

TEST_P(Combined, Uncertainty_of_a_group_is_the_figure_of_its_source)
{
    const TCombinedFigure& figure = GetParam();
    TExample example(figure.example);
    ASSERT_TRUE(example.Is_Loaded()) << example.Document().Last_Error().toStdString();

    const double value = example.Combined(figure.group, figure.identifiers, figure.length);

    EXPECT_EQ(Fixed_Text(value, Decimals(figure.expected)), figure.expected);
}

INSTANTIATE_TEST_SUITE_P(End_gauge, Combined, testing::ValuesIn(End_Gauge_Figures()), Combined_Name);
INSTANTIATE_TEST_SUITE_P(Vernier_calliper, Combined, testing::ValuesIn(Calliper_Figures()), Combined_Name);
INSTANTIATE_TEST_SUITE_P(Tape, Combined, testing::ValuesIn(Tape_Figures()), Combined_Name);
INSTANTIATE_TEST_SUITE_P(Measuring_machine, Combined, testing::ValuesIn(Machine_Figures()), Combined_Name);

// Values of single items

namespace {

struct TItemFigure
{
    QString example;
    QString component;
    QString item;
    QString identifier;
    double length;
    QString expected;
};

void PrintTo(const TItemFigure& figure, std::ostream* stream)
{
    *stream << figure.component.toStdString() << ", " << figure.item.toStdString() << ": "
            << figure.expected.toStdString();
}

std::vector<TItemFigure> End_Gauge_Items()
{
    const QString example = "gum_h1_end_gauge";
    const QString first_order = "First-order temperature effects";
    const QString second_order = "Second-order temperature effects";
    return {{example, "Standard", "Certificate", {}, 50.0, "0.000025"},
            {example, "Comparison", "Repeated observations", {}, 50.0, "0.0000058"},
            {example, "Comparison", "Random effects of the comparator", {}, 50.0, "0.0000039"},
            {example, "Comparison", "Systematic effects of the comparator", {}, 50.0, "0.0000067"},
            {example, first_order, "Expansion coefficient of the standard", {}, 50.0, "0.000000000"},
            {example, first_order, "Temperature of the bed", {}, 50.0, "0.000000000"},
            {example, first_order, "Difference of the expansion coefficients", {}, 50.0, "0.0000029"},
            {example, first_order, "Temperature difference of the gauges", {}, 50.0, "0.0000166"},
            {example, second_order, "Coefficient difference and bed temperature", {}, 50.0, "0.00001173"},
            {example, second_order, "Coefficient difference and bed temperature", {}, 1000.0, "0.000234521"},
            {example, second_order, "Coefficient and temperature difference", {}, 50.0, "0.00000167"},
            {example, "Bed temperature", "Mean temperature", {}, 50.0, "0.2"},
            {example, "Bed temperature", "Cyclic variation of the room", {}, 50.0, "0.35"}};
}

std::vector<TItemFigure> Calliper_Items()
{
    const QString example = "ea402_s10_vernier_calliper";
    return {{example, "Gauge block", "Calibration of the gauge block", {}, 150.0, "-0.00046"},
            {example, "Calliper", "Resolution", {}, 150.0, "0.0144"},
            {example, "Calliper", "Mechanical effects", {}, 150.0, "0.0289"},
            {example, "Calliper", "Mechanical effects", {}, 0.0, "0.029"},
            {example, "Thermal expansion", "Calliper to gauge block", {}, 150.0, "0.0020"},
            {example, "Temperature difference", "Calliper to gauge block", {}, 150.0, "1.15"}};
}

std::vector<TItemFigure> Tape_Items()
{
    const QString example = "npl_tape_string";
    return {{example, "Tape", "Calibration", {}, 5000.0, "2.5"},
            {example, "Tape", "Resolution", {}, 5000.0, "0.3"},
            {example, "String", "Not perfectly straight", {}, 5000.0, "5.8"},
            {example, "String", "Repeated readings", {}, 5000.0, "0.7"}};
}

std::vector<TItemFigure> Machine_Items()
{
    const QString example = "cmm_length_0_1000";
    const QString steel = "Steel shaft";
    const QString aluminium = "Aluminium frame";
    return {{example, "CMM", "Length error", "CMM 1", 1000.0, "0.001558846"},
            {example, "CMM", "Scale resolution", "CMM 1", 1000.0, "0.000144338"},
            {example, "CMM", "Repeatability", "CMM 1", 1000.0, "0.000400000"},
            {example, "Probing", "Probing error", {}, 1000.0, "0.000692820"},
            {example, "Probing", "Stylus qualification", {}, 1000.0, "0.000300000"},
            {example, "Workpiece", "Workpiece temperature", steel, 1000.0, "0.000000000"},
            {example, "Workpiece", "Expansion coefficient", steel, 1000.0, "0.000577350"},
            {example, "Workpiece", "Temperature gradient", steel, 1000.0, "0.000663953"},
            {example, "Workpiece", "Workpiece temperature", aluminium, 1000.0, "0.003324434"},
            {example, "Workpiece", "Expansion coefficient", aluminium, 1000.0, "0.000533472"},
            {example, "Workpiece", "Temperature gradient", aluminium, 1000.0, "0.001066943"},
            {example, "Joined sections", "Joint error", {}, 250.0, "0.000000000"},
            {example, "Joined sections", "Joint error", {}, 250.5, "0.000200000"},
            {example, "Joined sections", "Joint error", {}, 500.0, "0.000200000"},
            {example, "Joined sections", "Joint error", {}, 501.0, "0.000282843"},
            {example, "Joined sections", "Joint error", {}, 1000.0, "0.000346410"}};
}

class Item : public testing::TestWithParam<TItemFigure>
{};

std::string Item_Name(const testing::TestParamInfo<TItemFigure>& info)
{
    const TItemFigure& figure = info.param;
    return Name_Of(
        QStringList{figure.component, figure.item, figure.identifier, "at", Fixed_Text(figure.length, 1)}.join(' '));
}

} // namespace

TEST_P(Item, Value_is_the_figure_of_its_source)
{
    const TItemFigure& figure = GetParam();
    TExample example(figure.example);
    ASSERT_TRUE(example.Is_Loaded()) << example.Document().Last_Error().toStdString();

    const double value =
        example.Item_Value(figure.component, figure.item, {{figure.component, figure.identifier}}, figure.length);

    EXPECT_EQ(Fixed_Text(value, Decimals(figure.expected)), figure.expected);
}

INSTANTIATE_TEST_SUITE_P(End_gauge, Item, testing::ValuesIn(End_Gauge_Items()), Item_Name);
INSTANTIATE_TEST_SUITE_P(Vernier_calliper, Item, testing::ValuesIn(Calliper_Items()), Item_Name);
INSTANTIATE_TEST_SUITE_P(Tape, Item, testing::ValuesIn(Tape_Items()), Item_Name);
INSTANTIATE_TEST_SUITE_P(Measuring_machine, Item, testing::ValuesIn(Machine_Items()), Item_Name);

// The files

namespace {

struct TExampleFile
{
    QString name;
    QStringList groups;
    QStringList user_variables;
    int report_lengths;
};

void PrintTo(const TExampleFile& file, std::ostream* stream)
{
    *stream << file.name.toStdString();
}

std::vector<TExampleFile> Example_Files()
{
    return {
        {"gum_h1_end_gauge",
         {"Length to first order", "Length with second-order terms", "Measured difference", "Temperature of the bed"},
         {"Tbed: Bed temperature"},
         11},
        {"ea402_s10_vernier_calliper",
         {"Error of indication", "Calliper alone", "Thermal expansion alone", "Temperature"},
         {"Tdiff: Temperature difference"},
         7},
        {"npl_tape_string", {"Length of the string", "Tape alone", "String alone"}, {}, 11},
        {"cmm_length_0_1000",
         {"Machine alone", "Machine and probing", "Workpiece on the machine", "Workpiece only", "Temperature"},
         {"Tunc: Workpiece thermometry"},
         21}};
}

/// Attributes of the root have no fixed order, and the revision is the day of saving.
QString Without_Root_Attributes(QString text)
{
    return text.replace(QRegularExpression("<Norvexa_Data [^>]*>"), "<Norvexa_Data>");
}

QStringList Variable_Texts(const std::vector<TVariable>& variables)
{
    QStringList texts;
    for (const TVariable& variable : variables) {
        texts.append(QString("%1: %2").arg(variable.name, variable.description));
    }
    return texts;
}

QStringList Built_In_Variables()
{
    return {"CTEm: Machine Expansion Coefficient",
            "CTEc: Component Expansion Coefficient",
            "CTEd: Expansion Coefficient Difference",
            "Sr: Scale Resolution",
            "Td: Temperature Deviation from 20 C",
            "Tr: Temperature Range",
            "Tg: Temperature Gradient",
            "Sdev: Standard Deviation",
            "Lc: Length Count",
            "L: Test Length"};
}

bool Is_Temperature(TNorvexaData::TExpressionType type)
{
    return type == TNorvexaData::CONSTANT_TEMPERATURE || type == TNorvexaData::LENGTH_DEPENDENT_TEMPERATURE;
}

bool Is_Calendar_Date(const QString& text)
{
    return QLocale::c().toDate(text, "MMM d yyyy").isValid();
}

class Example_file : public testing::TestWithParam<TExampleFile>
{
protected:
    Example_file() : d_example(GetParam().name) {}

    void SetUp() override { ASSERT_TRUE(d_example.Is_Loaded()) << d_example.Document().Last_Error().toStdString(); }

    TExample d_example;
};

std::string File_Name(const testing::TestParamInfo<TExampleFile>& info)
{
    return info.param.name.toStdString();
}

} // namespace

TEST_P(Example_file, Is_saved_as_it_stands)
{
    const QTemporaryDir folder;
    const QString saved = folder.filePath("saved.norvexa");

    ASSERT_TRUE(d_example.Document().Save(saved, d_example.Variables(), d_example.Groups(), d_example.Input()))
        << d_example.Document().Last_Error().toStdString();

    const QString original = File_Text(Example_File(GetParam().name));
    EXPECT_TRUE(original.contains(" File_Version=\"3\""));
    EXPECT_TRUE(File_Text(saved).contains(" File_Version=\"3\""));
    EXPECT_EQ(Without_Root_Attributes(File_Text(saved)), Without_Root_Attributes(original));
}

TEST_P(Example_file, Has_its_report_groups)
{
    QStringList names;
    for (const TGroup& group : d_example.Groups()) {
        names.append(group.name);
    }
    EXPECT_EQ(names, GetParam().groups);
}

TEST_P(Example_file, Lists_the_built_in_variables_before_its_own)
{
    EXPECT_EQ(Variable_Texts(d_example.Variables()), Built_In_Variables() + GetParam().user_variables);
}

TEST_P(Example_file, Report_range_ends_on_a_position)
{
    const TInputData input = d_example.Input();
    EXPECT_NEAR(input.report_increment * (GetParam().report_lengths - 1), input.report_end, 1e-9);
}

TEST_P(Example_file, Groups_hold_reportable_members_in_the_order_of_the_budget)
{
    const QStringList reportable = d_example.Document().Enum_Reportable_Components();
    for (const TGroup& group : d_example.Groups()) {
        QStringList expected;
        for (const QString& name : reportable) {
            if (group.items.contains(name)) {
                expected.append(name);
            }
        }
        EXPECT_EQ(group.items, expected) << group.name.toStdString();
    }
}

TEST_P(Example_file, No_group_mixes_linear_and_temperature_items)
{
    for (const TGroup& group : d_example.Groups()) {
        std::vector<bool> kinds;
        for (const QString& member : group.items) {
            QString component;
            for (const QString& item : d_example.Items(member, &component)) {
                kinds.push_back(Is_Temperature(d_example.Document().Component_Item(component, item).expression_type));
            }
        }
        ASSERT_FALSE(kinds.empty());
        EXPECT_EQ(kinds, std::vector<bool>(kinds.size(), kinds.front())) << group.name.toStdString();
    }
}

TEST_P(Example_file, Every_item_has_one_replacement_for_each_identifier)
{
    const TNorvexa& document = d_example.Document();
    for (const QString& component : document.Enum_Components()) {
        for (const QString& item : document.Enum_Component_Items(component)) {
            QStringList identifiers;
            for (const auto& replacement : document.Component_Item(component, item).replacement_items) {
                identifiers.append(replacement.identifier);
            }
            EXPECT_EQ(identifiers, document.Enum_Component_Identifiers(component)) << item.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Example_file, testing::ValuesIn(Example_Files()), File_Name);

TEST(Example_identifiers, Are_those_of_the_measuring_machine)
{
    const TExample example("cmm_length_0_1000");
    ASSERT_TRUE(example.Is_Loaded()) << example.Document().Last_Error().toStdString();

    QStringList identifiers;
    for (const QString& component : example.Document().Enum_Components()) {
        const int id = example.Document().Component_Index(component);
        for (int i = 0; i < example.Document().Component_Identifier_Count(id); ++i) {
            const auto instance = example.Document().Component_Instance(id, i);
            identifiers.append(QStringList{component, instance.name, Fixed_Text(instance.length, 3),
                                           Fixed_Text(instance.expansion_coefficient * 1000.0, 2)}
                                   .join(", "));
            EXPECT_TRUE(Is_Calendar_Date(instance.calibration_date)) << instance.name.toStdString();
            EXPECT_TRUE(Is_Calendar_Date(instance.calibration_due_date)) << instance.name.toStdString();
        }
    }
    EXPECT_EQ(
        identifiers,
        QStringList({"CMM, CMM 1, 0.000, 11.50", "CMM, CMM 2, 0.000, 11.50", "Workpiece, Steel shaft, 1000.000, 11.50",
                     "Workpiece, Aluminium frame, 800.000, 23.10", "Workpiece, Silicon artefact, 300.000, 2.60"}));
}
