#include "core/interpolation.h"
#include "tests/support/exportfixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <utility>

// Whole exports through window, page and dialog, compared byte for byte with files that were checked by hand, and
// calculated once more here by the plain formulas of each budget.

namespace {

constexpr double ROOT_2 = 1.414213562373095;
constexpr double ROOT_3 = 1.732050807568877;
constexpr double ROOT_6 = 2.449489742783178;

/// What the last digit of 9 decimals may be off by rounding.
constexpr double HALF_A_DIGIT = 0.500001e-9;

using TChoices = std::vector<std::pair<QString, QString>>;

// The formulas

double Root_Sum_Square(const std::vector<double>& values)
{
    double sum = 0.0;
    for (const double value : values) {
        sum += value * value;
    }
    return std::sqrt(sum);
}

/// The machine of the example with a workpiece of `limit` mm, expansion coefficient `cte` per metre and C, whose
/// coefficient is known to `cte_limit`.
std::function<double(double)> Machine(double limit, double cte, double cte_limit)
{
    return [=](double length) {
        const double thermometry = Root_Sum_Square({0.5 / std::sqrt(2.0), 0.1 / std::sqrt(3.0)});
        const double metres = std::min(length, limit) / 1000.0;
        const int joints = length > 750.75 ? 3 : length > 500.5 ? 2 : length > 250.25 ? 1 : 0;
        return Root_Sum_Square({(0.0017 + length * 1e-6) / std::sqrt(3.0), 0.00025 / std::sqrt(3.0), 0.0004,
                                0.0012 / std::sqrt(3.0), 0.0003, std::fabs(cte - 0.0115) * thermometry * metres,
                                cte_limit * 0.5 / std::sqrt(3.0) * metres, cte * 0.1 / std::sqrt(3.0) * metres,
                                0.0002 * std::sqrt(static_cast<double>(joints))});
    };
}

double Calliper(double length)
{
    return Root_Sum_Square({0.0008 / ROOT_3, 0.025 / ROOT_3, 0.05 / ROOT_3, 0.0115 * 2.0 / ROOT_3 * length / 1000.0});
}

double End_Gauge(double length)
{
    const double bed = Root_Sum_Square({0.2, 0.5 / ROOT_2});
    const double metres = length / 1000.0;
    return Root_Sum_Square({0.000025, 0.0000058, 0.0000039, 0.0000067, 0.001 * 0.1 / ROOT_3 * metres,
                            0.0115 * 0.05 / ROOT_3 * metres, 0.001 * bed / ROOT_3 * metres,
                            0.002 * 0.05 / 3.0 * metres});
}

double Tape(double length)
{
    return Root_Sum_Square({0.5 * length / 1000.0, 0.5 / ROOT_3, 10.0 / ROOT_3, 2.1 / std::sqrt(10.0)});
}

/// The budget of everything at once: variables, identifiers, constant and length-dependent items, single items of one
/// component that share a variable, names with commas and quotes. The scale is that of 100 mm, coefficient 0.009.
double Workshop(double length)
{
    const double metres = length / 1000.0;
    const double bend = Root_Sum_Square({0.025, 0.02 * metres});
    const double count = std::floor(length / 100.1);
    return Root_Sum_Square({(0.0004 + 0.0001 * count) / ROOT_3, 0.0025 * 0.5 / ROOT_6 * metres,
                            -2.0 * bend * 0.001 * metres, 0.0005 + length * 1e-6, 0.01 * metres * 0.02});
}

// Exports

struct TExport
{
    std::string name; ///< of the file in tests/data/export too
    QString budget;   ///< its file
    QString group;
    TChoices identifiers;
    double end;
    double increment;
    std::function<double(double)> uc;
};

void PrintTo(const TExport& row, std::ostream* stream)
{
    *stream << row.name;
}

const QString WORKPIECE = "Workpiece on the machine";

QString Example(const QString& name)
{
    return QStringLiteral(NORVEXA_EXAMPLES "/%1.norvexa").arg(name);
}

const std::vector<TExport>& Exports()
{
    static const std::vector<TExport> EXPORTS = {
        {"cmm_default", Example("cmm_length_0_1000"), WORKPIECE, {}, 1000.0, 50.0, Machine(1000.0, 0.0115, 0.002)},
        {"cmm_aluminium",
         Example("cmm_length_0_1000"),
         WORKPIECE,
         {{"CMM", "CMM 1"}, {"Workpiece", "Aluminium frame"}},
         1000.0,
         50.0,
         Machine(800.0, 0.0231, 0.00231)},
        {"calliper", Example("ea402_s10_vernier_calliper"), "Error of indication", {}, 150.0, 25.0, Calliper},
        {"end_gauge", Example("gum_h1_end_gauge"), "Length with second-order terms", {}, 50.0, 5.0, End_Gauge},
        {"tape", Example("npl_tape_string"), "Length of the string", {}, 5017.0, 501.7, Tape},
        {"workshop",
         QStringLiteral(NORVEXA_TEST_DATA "/export/workshop.norvexa"),
         "Length, all",
         {{"Scale, glass", "S \"1\""}},
         500.0,
         50.0,
         Workshop},
    };
    return EXPORTS;
}

// Written texts

/// The cells after the third one in the line that begins with `beginning`.
QStringList Cells(const QStringList& lines, const QString& beginning)
{
    for (const QString& line : lines) {
        if (line.startsWith(beginning)) {
            return line.mid(beginning.size()).split(',');
        }
    }
    ADD_FAILURE() << "No line begins with " << beginning.toStdString();
    return {};
}

// Least squares once more

using TMatrix = std::array<std::array<long double, 4>, 3>;

/// The normal equations in metres, so that their numbers stay near 1.
TMatrix Normal_Equations(const std::vector<TVector2>& points)
{
    TMatrix matrix = {};
    for (const TVector2& point : points) {
        const long double x = point(0) / 1000.0L;
        const std::array<long double, 3> powers = {1.0L, x, x * x};
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                matrix[row][column] += powers[row] * powers[column];
            }
            matrix[row][3] += powers[row] * point(1);
        }
    }
    return matrix;
}

/// Constant, coefficient of L and of L^2 with L in metres, by elimination.
std::array<long double, 3> Fitted(const std::vector<TVector2>& points)
{
    TMatrix matrix = Normal_Equations(points);
    for (std::size_t pivot = 0; pivot < 3; ++pivot) {
        for (std::size_t row = 0; row < 3; ++row) {
            const long double factor = row == pivot ? 0.0L : matrix[row][pivot] / matrix[pivot][pivot];
            for (std::size_t column = 0; column < 4; ++column) {
                matrix[row][column] -= factor * matrix[pivot][column];
            }
        }
    }
    return {matrix[0][3] / matrix[0][0], matrix[1][3] / matrix[1][1], matrix[2][3] / matrix[2][2]};
}

std::string Signed(long double value)
{
    return std::string(value < 0.0L ? "" : "+") + QString::number(static_cast<double>(value), 'f', 6).toStdString();
}

class TExportedFile : public TExportFixture, public ::testing::WithParamInterface<TExport>
{
protected:
    QByteArray Export()
    {
        Drop_Files({GetParam().budget});
        Show_Report(GetParam().group);
        for (const auto& [component, identifier] : GetParam().identifiers) {
            Choose_Identifier(component, identifier);
        }
        Export_CSV(Path("export.csv"));
        return Bytes(Path("export.csv"));
    }

    QStringList Lines() { return QString::fromLatin1(Export()).split('\n'); }

    static QString Golden_Path()
    {
        return QStringLiteral(NORVEXA_TEST_DATA "/export/%1.csv").arg(QString::fromStdString(GetParam().name));
    }

    /// The combined uncertainty by the formulas of this file.
    static std::vector<TVector2> Points()
    {
        std::vector<TVector2> points;
        const int steps = static_cast<int>(std::lround(GetParam().end / GetParam().increment));
        for (int step = 0; step <= steps; ++step) {
            const double length = step * GetParam().increment;
            points.emplace_back(length, GetParam().uc(length));
        }
        return points;
    }
};

} // namespace

TEST_P(TExportedFile, Is_the_golden_one_byte_for_byte)
{
    EXPECT_EQ(QString::fromLatin1(Export()).split('\n'), QString::fromLatin1(Bytes(Golden_Path())).split('\n'));
    EXPECT_EQ(Bytes(Path("export.csv")), Bytes(Golden_Path()));
    EXPECT_EQ(Page(), "Report");
}

TEST_P(TExportedFile, Holds_the_uncertainty_that_the_formulas_of_the_budget_give)
{
    const QStringList lines = Lines();
    const QStringList positions = Cells(lines, ",,Position (mm),");
    const QStringList uncertainties = Cells(lines, ",,Combined,");
    const std::vector<TVector2> points = Points();

    ASSERT_EQ(positions.size(), static_cast<int>(points.size()));
    ASSERT_EQ(uncertainties.size(), positions.size());
    for (int index = 0; index < positions.size(); ++index) {
        const TVector2& point = points.at(static_cast<std::size_t>(index));
        EXPECT_NEAR(positions.at(index).toDouble(), point(0), 0.0005);
        EXPECT_NEAR(uncertainties.at(index).toDouble(), point(1), HALF_A_DIGIT) << "at " << point(0) << " mm";
    }
}

TEST_P(TExportedFile, Holds_the_formula_that_elimination_gives)
{
    const QStringList lines = Lines();
    const std::array<long double, 3> fit = Fitted(Points());

    for (const int factor : {1, 2}) {
        const std::string expected = QString::number(static_cast<double>(factor * fit[0]), 'f', 6).toStdString() +
                                     Signed(factor * fit[1]) + "L" + Signed(factor * fit[2]) +
                                     "L^2 mm  (L is length in meters)";
        EXPECT_EQ(Cells(lines, QString(",,Uc(K=%1):,").arg(factor)), QStringList(QString::fromStdString(expected)));
    }
}

TEST_P(TExportedFile, Has_a_fit_that_agrees_with_elimination_to_9_decimals)
{
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    ASSERT_TRUE(LeastSquares::Fit_Curve(Points(), &a, &b, &c));

    const std::array<long double, 3> fit = Fitted(Points());

    EXPECT_NEAR(c, static_cast<double>(fit[0]), HALF_A_DIGIT);
    EXPECT_NEAR(b * 1000.0, static_cast<double>(fit[1]), HALF_A_DIGIT);
    EXPECT_NEAR(a * 1000000.0, static_cast<double>(fit[2]), HALF_A_DIGIT);
}

INSTANTIATE_TEST_SUITE_P(Table, TExportedFile, ::testing::ValuesIn(Exports()),
                         [](const auto& row) { return row.param.name; });

// The formulas that the page of the machine's example states

namespace {

struct TFormula
{
    const char* name;
    TChoices identifiers;
    QString standard; ///< K = 1
    QString expanded; ///< K = 2
};

void PrintTo(const TFormula& row, std::ostream* stream)
{
    *stream << row.name;
}

const TFormula FORMULAS[] = {
    {"Default", {}, "0.001301+0.000535L+0.000189L^2", "0.002602+0.001071L+0.000378L^2"},
    {"CMM_1_Steel_shaft",
     {{"CMM", "CMM 1"}, {"Workpiece", "Steel shaft"}},
     "0.001301+0.000535L+0.000189L^2",
     "0.002602+0.001071L+0.000378L^2"},
    {"CMM_2_Steel_shaft",
     {{"CMM", "CMM 2"}, {"Workpiece", "Steel shaft"}},
     "0.001118+0.000497L+0.000219L^2",
     "0.002235+0.000993L+0.000439L^2"},
    {"CMM_1_Aluminium_frame",
     {{"CMM", "CMM 1"}, {"Workpiece", "Aluminium frame"}},
     "0.001081+0.003463L-0.000293L^2",
     "0.002163+0.006927L-0.000587L^2"},
    {"CMM_1_Silicon_artefact",
     {{"CMM", "CMM 1"}, {"Workpiece", "Silicon artefact"}},
     "0.001295+0.001426L-0.000704L^2",
     "0.002589+0.002852L-0.001408L^2"},
};

class TMachineFormula : public TExportFixture, public ::testing::WithParamInterface<TFormula>
{};

} // namespace

TEST_P(TMachineFormula, Is_the_stated_one)
{
    Drop_Files({Example("cmm_length_0_1000")});
    Show_Report(WORKPIECE);
    for (const auto& [component, identifier] : GetParam().identifiers) {
        Choose_Identifier(component, identifier);
    }

    Export_CSV(Path("export.csv"));

    const QString unit = " mm  (L is length in meters)";
    const QStringList lines = QString::fromLatin1(Bytes(Path("export.csv"))).split('\n');
    EXPECT_EQ(lines.mid(lines.size() - 3), QStringList({",,Uc(K=1):," + GetParam().standard + unit,
                                                        ",,Uc(K=2):," + GetParam().expanded + unit, ""}));
}

INSTANTIATE_TEST_SUITE_P(Table, TMachineFormula, ::testing::ValuesIn(FORMULAS),
                         [](const auto& row) { return std::string(row.param.name); });
