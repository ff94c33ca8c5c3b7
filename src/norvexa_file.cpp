#include "src/norvexa.h"

#include "core/assertion.h"
#include "core/number.h"
#include "core/xmlchildren.h"
#include "core/xmlfile.h"
#include "core/xmltext.h"

#include <QDate>
#include <QLocale>

#include <utility>

namespace {

const char ROOT_NAME[] = "Norvexa_Data";
constexpr int NEWEST_VERSION = 3;

// Coefficients of components and identifiers are stored as they are shown: a thousand times the model's value.
constexpr double COEFFICIENT_SCALE = 1000.0;

// What a budget file holds is described once, by the functions Exchange_... below. They go through an element with one
// of the two archives: TReader fills the records from the file, TWriter writes them to it.

class TReader
{
public:
    TReader(const TNorvexa* document, TXmlFile* xml_file, const QDomElement& node, int version)
        : d_document(document), d_xml_file(xml_file), d_node(node), d_children(node), d_version(version)
    {}

    const TNorvexa* Document() const { return d_document; }
    bool Has_Gradient() const { return d_version >= 3; }

    void Text(const char* name, QString* text) const { *text = Leaf(name, false); }
    void Optional_Text(const char* name, QString* text) const { *text = Leaf(name, true); }
    void Constant(const char*, const char*) const {}

    void Number(const char* name, double* value, int, double scale = 1.0) const
    {
        *value = Finite_Number(Leaf(name, false)) / scale;
    }

    template <typename TValue, typename TConvert>
    void Choice(const char* name, TValue* value, TConvert convert) const
    {
        *value = convert(Leaf(name, false));
    }

    template <typename TExchange>
    void Container(const char* name, TExchange exchange) const
    {
        exchange(At(Child(name)));
    }

    template <typename TRecords, typename TExchange>
    void List(const char* name, const char* element, TRecords* records, TExchange exchange) const
    {
        const QDomElement list = Child(name);

        records->clear();
        for (QDomElement node = d_xml_file->Get_Node(&list, element, true); !node.isNull();
             node = d_xml_file->Get_Sibling_Node(&node, element, true)) {
            typename TRecords::value_type record;
            exchange(At(node), &record);
            records->push_back(std::move(record));
        }
    }

    void Own_Text(QString* text) const { *text = Text_Of(d_node, false); }

private:
    TReader At(const QDomElement& node) const { return {d_document, d_xml_file, node, d_version}; }

    QDomElement Child(const QString& name) const
    {
        const QDomElement child = d_children.Find(name);
        // Throws.
        return child.isNull() ? d_xml_file->Get_Node(&d_node, name, false) : child;
    }

    QString Leaf(const char* name, bool optional) const { return Text_Of(Child(name), optional); }

    // Blanks come through in a CDATA section only. Saved as text they would be gone, so they count as no text at once.
    QString Text_Of(const QDomElement& node, bool optional) const
    {
        const QString text = d_xml_file->Read_Text_Node(&node, optional);

        if (!Xml_Is_Blank(text)) {
            return text;
        }
        if (!optional) {
            throw TXmlFileException(QString("ERR:  Node Text for '%1' is not optional.").arg(node.tagName()),
                                    TXmlFileException::Xml_Content);
        }
        return QString();
    }

    const TNorvexa* d_document;
    TXmlFile* d_xml_file;
    QDomElement d_node;
    mutable TXmlChildren d_children;
    int d_version;
};

class TWriter
{
public:
    TWriter(const TNorvexa* document, TXmlFile* xml_file, const QDomElement& node)
        : d_document(document), d_xml_file(xml_file), d_node(node)
    {}

    const TNorvexa* Document() const { return d_document; }
    bool Has_Gradient() const { return true; }

    void Text(const char* name, const QString* text) const { Leaf(name, *text); }
    void Optional_Text(const char* name, const QString* text) const { Leaf(name, *text); }
    void Constant(const char* name, const char* text) const { Leaf(name, text); }

    void Number(const char* name, const double* value, int decimals, double scale = 1.0) const
    {
        Leaf(name, Fixed_Text(*value * scale, decimals));
    }

    template <typename TValue, typename TConvert>
    void Choice(const char* name, const TValue* value, TConvert convert) const
    {
        Leaf(name, convert(*value));
    }

    template <typename TExchange>
    void Container(const char* name, TExchange exchange) const
    {
        exchange(Child(name));
    }

    template <typename TRecords, typename TExchange>
    void List(const char* name, const char* element, const TRecords* records, TExchange exchange) const
    {
        const TWriter list = Child(name);

        for (const auto& record : *records) {
            exchange(list.Child(element), &record);
        }
    }

    // Meant: texts are escaped here and once more by the XML writer. Readers undo only the second escaping.
    void Own_Text(const QString* text) const
    {
        QDomElement node = d_node;
        d_xml_file->Write_Text_Node(&node, text->toHtmlEscaped());
    }

private:
    TWriter Child(const char* name) const
    {
        QDomElement parent = d_node;
        return {d_document, d_xml_file, d_xml_file->Create_Node(&parent, name)};
    }

    void Leaf(const char* name, const QString& text) const { Child(name).Own_Text(&text); }

    const TNorvexa* d_document;
    TXmlFile* d_xml_file;
    QDomElement d_node;
};

// The elements of a budget file; a record is constant where it is written.

template <typename TArchive, typename TReplacementItem>
void Exchange_Replacement_Item(const TArchive& archive, TReplacementItem* replacement)
{
    const TNorvexa* document = archive.Document();

    archive.Text("Identifier", &replacement->identifier);
    archive.Text("Expression", &replacement->expression);
    archive.Choice("Use_Default_Expression", &replacement->use_default_expression,
                   [=](const auto& value) { return document->Boolean_Type(value); });
}

template <typename TArchive, typename TComponentItem>
void Exchange_Item(const TArchive& archive, TComponentItem* item)
{
    const TNorvexa* document = archive.Document();

    archive.Text("Name", &item->name);
    archive.Text("Expression", &item->expression);
    archive.Choice("Distribution", &item->distribution,
                   [=](const auto& value) { return document->Distribution_Type(value); });
    archive.Choice("Expression_Type", &item->expression_type,
                   [=](const auto& value) { return document->Expression_Type(value); });
    archive.Choice("Uncertainty_Type", &item->uc_type, [=](const auto& value) { return document->UCType(value); });
    archive.Number("Sensitivity", &item->sensitivity, 6);
    archive.List("Replacement_Items", "Item", &item->replacement_items,
                 [](const TArchive& node, auto* replacement) { Exchange_Replacement_Item(node, replacement); });
}

template <typename TArchive, typename TComponentInstance>
void Exchange_Identifier(const TArchive& archive, TComponentInstance* instance)
{
    archive.Text("Name", &instance->name);
    archive.Text("Calibration_Date", &instance->calibration_date);
    archive.Text("Calibration_Due_Date", &instance->calibration_due_date);
    archive.Number("Length", &instance->length, 6);
    archive.Number("Expansion_Coefficient", &instance->expansion_coefficient, 2, COEFFICIENT_SCALE);
}

template <typename TArchive, typename TComponent>
void Exchange_Component(const TArchive& archive, TComponent* component)
{
    const TNorvexa* document = archive.Document();
    const auto boolean = [=](const auto& value) { return document->Boolean_Type(value); };

    archive.Text("Name", &component->name);
    archive.Choice("Mode", &component->mode, [=](const auto& value) { return document->UCMode(value); });
    archive.Choice("Export_Equipment", &component->export_equipment, boolean);
    archive.Choice("Limit_Uncertainty_Length", &component->limit_uncertainty_length, boolean);
    archive.Number("Length", &component->length, 6);
    archive.Number("Expansion_Coefficient", &component->expansion_coefficient, 2, COEFFICIENT_SCALE);
    archive.List("Identifiers", "Identifier", &component->instances,
                 [](const TArchive& node, auto* instance) { Exchange_Identifier(node, instance); });
    archive.List("Component_Items", "Item", &component->items,
                 [](const TArchive& node, auto* item) { Exchange_Item(node, item); });
}

template <typename TArchive, typename TRecord>
void Exchange_Variable(const TArchive& archive, TRecord* variable)
{
    archive.Text("Name", &variable->name);
    archive.Optional_Text("Description", &variable->description);
}

template <typename TArchive, typename TRecord>
void Exchange_Group(const TArchive& archive, TRecord* group)
{
    archive.Text("Name", &group->name);
    archive.List("Items", "Item", &group->items, [](const TArchive& node, auto* item) { node.Own_Text(item); });
}

template <typename TArchive, typename TRecord>
void Exchange_User_Input(const TArchive& archive, TRecord* input_data)
{
    archive.Number("Machine_Expansion_Coefficient", &input_data->machine_expansion_coefficient, 2);
    archive.Number("Machine_Scale", &input_data->machine_scale, 6);
    archive.Number("Temperature_Minimum", &input_data->temperature_minimum, 2);
    archive.Number("Temperature_Maximum", &input_data->temperature_maximum, 2);
    if (archive.Has_Gradient()) {
        archive.Number("Temperature_Gradient", &input_data->temperature_gradient, 2);
    }
    // The range always starts at zero; the element keeps the file's shape.
    archive.Constant("Report_Start", "0.000");
    archive.Number("Report_Increment", &input_data->report_increment, 3);
    archive.Number("Report_End", &input_data->report_end, 3);
}

template <typename TArchive, typename TComponents, typename TVariables, typename TGroups, typename TRecord>
void Exchange_Budget(const TArchive& archive, TComponents* components, TVariables* variables, TGroups* groups,
                     TRecord* input_data)
{
    archive.List("Components", "Component", components,
                 [](const TArchive& node, auto* component) { Exchange_Component(node, component); });
    archive.List("Variables", "Variable", variables,
                 [](const TArchive& node, auto* variable) { Exchange_Variable(node, variable); });
    archive.List("Report_Groups", "Group", groups,
                 [](const TArchive& node, auto* group) { Exchange_Group(node, group); });
    archive.Container("User_Input", [=](const TArchive& node) { Exchange_User_Input(node, input_data); });
}

QString File_Revision()
{
    return QLocale::c().toString(QDate::currentDate(), "MMM dd yyyy");
}

} // namespace

bool TNorvexa::Load(const QString& file_name, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                    TInputData* input_data)
{
    NORVEXA_ASSERT(variables);
    NORVEXA_ASSERT(groups);
    NORVEXA_ASSERT(input_data);

    TXmlFile xml_file;
    int version = 0;

    try {
        xml_file.Set_File_Name(file_name);
        xml_file.Open(ROOT_NAME, &version, true);
        switch (version) {
        case 1:
            LoadV1(&xml_file, variables, groups, input_data);
            return true;
        case 2:
            LoadV2(&xml_file, variables, groups, input_data);
            return true;
        case 3:
            LoadV3(&xml_file, variables, groups, input_data);
            return true;
        default:
            d_last_error = "Norvexa_Data file version not supported";
            return false;
        }
    } catch (const TXmlFileException& exception) {
        d_last_error = exception.message;
        return false;
    }
}

void TNorvexa::LoadV1(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                      TInputData* input_data)
{
    NORVEXA_ASSERT(xml_file);

    d_components.clear();
    Exchange_Budget(TReader(this, xml_file, *xml_file->Root_Element(), 1), &d_components, variables, groups,
                    input_data);
}

void TNorvexa::LoadV2(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                      TInputData* input_data)
{
    NORVEXA_ASSERT(xml_file);
    LoadV1(xml_file, variables, groups, input_data);
}

void TNorvexa::LoadV3(TXmlFile* xml_file, std::vector<TVariable>* variables, std::vector<TGroup>* groups,
                      TInputData* input_data)
{
    NORVEXA_ASSERT(xml_file);

    d_components.clear();
    Exchange_Budget(TReader(this, xml_file, *xml_file->Root_Element(), 3), &d_components, variables, groups,
                    input_data);
}

bool TNorvexa::Save(const QString& file_name, const std::vector<TVariable>& variables,
                    const std::vector<TGroup>& groups, const TInputData& input_data) const
{
    TXmlFile xml_file;

    try {
        xml_file.Set_File_Name(file_name);
        xml_file.Reset(ROOT_NAME, NEWEST_VERSION);
        xml_file.Write_Attribute(xml_file.Root_Element(), "File_Revision", File_Revision());
        Exchange_Budget(TWriter(this, &xml_file, *xml_file.Root_Element()), &d_components, &variables, &groups,
                        &input_data);
        xml_file.Write_File(false);
        return true;
    } catch (const TXmlFileException& exception) {
        d_last_error = exception.message;
        return false;
    }
}
