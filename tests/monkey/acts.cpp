#include "tests/monkey/acts.h"

#include "core/numberedit.h"
#include "tests/monkey/files.h"
#include "tests/monkey/journal.h"
#include "tests/monkey/memory.h"
#include "tests/monkey/random.h"
#include "tests/monkey/texts.h"
#include "tests/monkey/userinput.h"
#include "tests/monkey/widgets.h"
#include "tests/support/guiacts.h"
#include "tests/support/numberfields.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMimeData>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

const int RESTART_PERCENT = 10;
const int SAVE_PERCENT = 8;
const int MOST_MEMBERS = 4;

struct TKey
{
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
};

const QList<TKey>& Keys()
{
    static const QList<TKey> KEYS = {
        {Qt::Key_A, Qt::NoModifier},          {Qt::Key_B, Qt::NoModifier},         {Qt::Key_P, Qt::NoModifier},
        {Qt::Key_S, Qt::NoModifier},          {Qt::Key_Z, Qt::NoModifier},         {Qt::Key_1, Qt::NoModifier},
        {Qt::Key_0, Qt::NoModifier},          {Qt::Key_Period, Qt::NoModifier},    {Qt::Key_Minus, Qt::NoModifier},
        {Qt::Key_Plus, Qt::NoModifier},       {Qt::Key_Asterisk, Qt::NoModifier},  {Qt::Key_Space, Qt::NoModifier},
        {Qt::Key_Space, Qt::NoModifier},      {Qt::Key_Tab, Qt::NoModifier},       {Qt::Key_Tab, Qt::NoModifier},
        {Qt::Key_Backtab, Qt::ShiftModifier}, {Qt::Key_F2, Qt::NoModifier},        {Qt::Key_F2, Qt::NoModifier},
        {Qt::Key_F2, Qt::NoModifier},         {Qt::Key_F4, Qt::NoModifier},        {Qt::Key_Delete, Qt::NoModifier},
        {Qt::Key_Delete, Qt::NoModifier},     {Qt::Key_Backspace, Qt::NoModifier}, {Qt::Key_Return, Qt::NoModifier},
        {Qt::Key_Return, Qt::NoModifier},     {Qt::Key_Enter, Qt::KeypadModifier}, {Qt::Key_Escape, Qt::NoModifier},
        {Qt::Key_Escape, Qt::NoModifier},     {Qt::Key_Up, Qt::NoModifier},        {Qt::Key_Down, Qt::NoModifier},
        {Qt::Key_Down, Qt::NoModifier},       {Qt::Key_Left, Qt::NoModifier},      {Qt::Key_Right, Qt::NoModifier},
        {Qt::Key_Up, Qt::ShiftModifier},      {Qt::Key_Down, Qt::ShiftModifier},   {Qt::Key_Down, Qt::ControlModifier},
        {Qt::Key_Space, Qt::ControlModifier}, {Qt::Key_Home, Qt::NoModifier},      {Qt::Key_End, Qt::NoModifier},
        {Qt::Key_PageUp, Qt::NoModifier},     {Qt::Key_PageDown, Qt::NoModifier},  {Qt::Key_Menu, Qt::NoModifier},
        {Qt::Key_F10, Qt::NoModifier}};
    return KEYS;
}

const QList<TKey>& Shortcuts()
{
    static const QList<TKey> SHORTCUTS = {
        {Qt::Key_S, Qt::ControlModifier}, {Qt::Key_S, Qt::ControlModifier}, {Qt::Key_S, Qt::ControlModifier},
        {Qt::Key_S, Qt::ControlModifier}, {Qt::Key_O, Qt::ControlModifier}, {Qt::Key_N, Qt::ControlModifier},
        {Qt::Key_A, Qt::ControlModifier}, {Qt::Key_A, Qt::ControlModifier}, {Qt::Key_C, Qt::ControlModifier},
        {Qt::Key_V, Qt::ControlModifier}, {Qt::Key_V, Qt::ControlModifier}, {Qt::Key_X, Qt::ControlModifier},
        {Qt::Key_Z, Qt::ControlModifier}, {Qt::Key_Y, Qt::ControlModifier}, {Qt::Key_F1, Qt::ShiftModifier},
        {Qt::Key_Down, Qt::AltModifier},  {Qt::Key_F4, Qt::AltModifier}};
    return SHORTCUTS;
}

const QList<Qt::Key>& Page_Keys()
{
    static const QList<Qt::Key> KEYS = {Qt::Key_C, Qt::Key_C, Qt::Key_V, Qt::Key_G, Qt::Key_R, Qt::Key_L};
    return KEYS;
}

QString Key_Text(const TKey& key)
{
    return QString("key 0x%1 modifiers 0x%2").arg(int(key.key), 0, 16).arg(int(key.modifiers), 0, 16);
}

QString Place_Text(const QWidget* widget, const QPoint& place)
{
    return QString("%1 %2,%3").arg(Widget_Name(widget), QString::number(place.x()), QString::number(place.y()));
}

} // namespace

TActs::TActs(QMainWindow* window, TRandom* random, const TFiles* files, TMemory* memory)
    : d_window(window), d_random(random), d_files(files), d_memory(memory)
{}

void TActs::Do_One()
{
    static const QList<TAct> ACTS = {{28, &TActs::Click},
                                     {6, &TActs::Double_Click},
                                     {5, &TActs::Open_Context_Menu},
                                     {14, &TActs::Press_Key},
                                     {4, &TActs::Press_Shortcut},
                                     {5, &TActs::Turn_Page},
                                     {5, &TActs::Drag},
                                     {10, &TActs::Fill_Field},
                                     {5, &TActs::Type},
                                     {3, &TActs::Paste},
                                     {6, &TActs::Rename},
                                     {7, &TActs::Add},
                                     {3, &TActs::Replace_Expression},
                                     {3, &TActs::Gather},
                                     {4, &TActs::Choose_Group},
                                     {1, &TActs::Drop_Files},
                                     {1, &TActs::Close}};
    static const int WEIGHTS =
        std::accumulate(ACTS.begin(), ACTS.end(), 0, [](int sum, const TAct& act) { return sum + act.weight; });

    bool is_done = false;
    while (!is_done) {
        int choice = d_random->Below(WEIGHTS);
        const auto chosen = std::find_if(ACTS.begin(), ACTS.end(), [&choice](const TAct& act) {
            choice -= act.weight;
            return choice < 0;
        });
        is_done = (this->*chosen->act)();
    }
}

// Mouse

bool TActs::Click()
{
    static const QList<Qt::KeyboardModifiers> MODIFIERS = {Qt::NoModifier, Qt::NoModifier,      Qt::NoModifier,
                                                           Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
    QWidget* widget = Random_Widget();
    const QPoint place = Random_Place(widget);
    const Qt::KeyboardModifiers modifiers = View_Of(widget) == nullptr ? Qt::NoModifier : d_random->Pick(MODIFIERS);

    Journal::Note(QString("click %1 modifiers 0x%2").arg(Place_Text(widget, place)).arg(int(modifiers), 0, 16));
    User_Input::Click(widget, place, Qt::LeftButton, modifiers);
    return true;
}

bool TActs::Double_Click()
{
    QWidget* widget = Random_Widget();
    const QPoint place = Random_Place(widget);

    Journal::Note("double click " + Place_Text(widget, place));
    User_Input::Double_Click(widget, place);
    return true;
}

bool TActs::Open_Context_Menu()
{
    QWidget* widget = Random_Widget();
    const QPoint place = Random_Place(widget);

    Journal::Note("right click " + Place_Text(widget, place));
    User_Input::Click(widget, place, Qt::RightButton);
    return true;
}

bool TActs::Drag()
{
    QWidget* from = Random_Widget();
    QWidget* to = d_random->Chance(60) ? from : Random_Widget();
    const QPoint start = Random_Place(from);
    const QPoint end = Random_Place(to);

    Journal::Note(QString("drag %1 to %2").arg(Place_Text(from, start), Place_Text(to, end)));
    User_Input::Drag(from, start, to, end);
    return true;
}

bool TActs::Drop_Files()
{
    const QString path = d_files->Random_Path(d_random);
    const int copies = d_random->Chance(10) ? d_random->Below(3) * 2 : 1;
    QWidget* target = Random_Widget();
    QStringList paths;
    for (int copy = 0; copy < copies; ++copy) {
        paths << path;
    }
    Drop(paths, target);
    return true;
}

void TActs::Drop(const QString& path)
{
    Drop(QStringList(path), d_window);
}

// The window system tells the widget under the cursor; Qt offers the drag to its parents and remembers who took it.
void TActs::Drop(const QStringList& paths, QWidget* target)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) {
        urls << QUrl::fromLocalFile(path);
    }
    data.setUrls(urls);
    Journal::Note(QString("drop %1 files %2 on %3")
                      .arg(QString::number(urls.size()), d_files->Name(paths.value(0)), Widget_Name(target)));

    const QPoint place = target->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    if (enter.isAccepted()) {
        d_memory->File_May_Be_Opened();
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &drop);
    }
}

void TActs::Select(QAbstractItemView* view, const QModelIndex& entry, Qt::KeyboardModifiers modifiers)
{
    view->scrollTo(entry);
    const QRect seen = view->visualRect(entry) & view->viewport()->rect();
    User_Input::Click(view->viewport(), seen.center(), Qt::LeftButton, modifiers);
}

// Keyboard

bool TActs::Press_Key()
{
    const TKey key = d_random->Pick(Keys());

    Journal::Note(Key_Text(key));
    User_Input::Press(d_window, key.key, key.modifiers);
    return true;
}

bool TActs::Press_Shortcut()
{
    const TKey key = d_random->Pick(Shortcuts());

    Journal::Note("shortcut " + Key_Text(key));
    User_Input::Press(d_window, key.key, key.modifiers);
    return true;
}

bool TActs::Turn_Page()
{
    const TKey key = {d_random->Pick(Page_Keys()), Qt::AltModifier};

    Journal::Note("page " + Key_Text(key));
    User_Input::Press(d_window, key.key, key.modifiers);
    return true;
}

bool TActs::Type()
{
    const QString text = Random_Text(d_random);

    Journal::Note("type " + Printable(text));
    User_Input::Type(d_window, text);
    return true;
}

bool TActs::Paste()
{
    const QString text = Random_Text(d_random);

    Journal::Note("paste " + Printable(text));
    User_Input::Paste(d_window, text);
    return true;
}

// Fields and entries

bool TActs::Fill_Field()
{
    const QList<QLineEdit*> fields = Reachable<QLineEdit>(d_window);
    if (fields.isEmpty()) {
        return false;
    }
    Fill(d_random->Pick(fields));
    return true;
}

void TActs::Fill(QLineEdit* field)
{
    const QString text = Fitting_Text(field);

    Journal::Note(
        QString("fill %1 (%2) with %3").arg(Widget_Name(field), Widget_Name(field->parentWidget()), Printable(text)));
    User_Input::Click(field, field->rect().center());
    User_Input::Press(d_window, Qt::Key_A, Qt::ControlModifier);
    if (d_random->Chance(50)) {
        User_Input::Paste(d_window, text);
    } else {
        User_Input::Press(d_window, Qt::Key_Delete);
        User_Input::Type(d_window, text);
    }
    End_Entering();
}

QString TActs::Fitting_Text(const QWidget* field) const
{
    if (qobject_cast<const QAbstractSpinBox*>(field->parentWidget()) != nullptr) {
        return QString::number(1990 + d_random->Below(60));
    }
    if (d_random->Chance(5)) {
        return Random_Text(d_random);
    }
    return qobject_cast<const TNumberEdit*>(field) != nullptr ? Fitting_Number(field) : Random_Expression(d_random);
}

// Mostly one that the file keeps whole: with others the values of a report cannot be looked at.
QString TActs::Fitting_Number(const QWidget* field) const
{
    QString number = Random_Number(d_random);
    while (Number_Fields::Is_Too_Fine(field->objectName(), number) && !d_random->Chance(2)) {
        number = Random_Number(d_random);
    }
    return number;
}

bool TActs::Rename()
{
    QList<QAbstractItemView*> views;
    for (QAbstractItemView* view : Reachable<QAbstractItemView>(d_window)) {
        if (view->objectName() == "budget_tree" || view->objectName() == "identifier_list" ||
            view->objectName() == "group_list") {
            views << view;
        }
    }
    if (views.isEmpty()) {
        return false;
    }
    QAbstractItemView* view = d_random->Pick(views);
    const QModelIndex entry = Random_Entry(view, d_random);
    if (!entry.isValid()) {
        return false;
    }
    const QString name = Random_Name(d_random);
    Journal::Note(
        QString("rename %1 in %2 to %3").arg(Printable(entry.data().toString()), Widget_Name(view), Printable(name)));
    Select(view, entry);
    User_Input::Press(d_window, Qt::Key_F2);
    User_Input::Press(d_window, Qt::Key_A, Qt::ControlModifier);
    User_Input::Paste(d_window, name);
    End_Entering();
    return true;
}

void TActs::End_Entering()
{
    static const QList<Qt::Key> ENDS = {Qt::Key_Return, Qt::Key_Return, Qt::Key_Return,
                                        Qt::Key_Tab,    Qt::Key_Escape, Qt::Key_unknown};
    if (d_random->Chance(SAVE_PERCENT)) {
        Press_Save();
        return;
    }
    const Qt::Key end = d_random->Pick(ENDS);

    if (end != Qt::Key_unknown) {
        Journal::Note(QString("ended by 0x%1").arg(int(end), 0, 16));
        User_Input::Press(d_window, end);
    }
}

// The button leaves the focus in the field.
void TActs::Press_Save()
{
    QWidget* button = Child<QToolBar>(d_window, "tool_bar")->widgetForAction(Child<QAction>(d_window, "action_save"));

    Journal::Note("Save");
    User_Input::Click(button, button->rect().center());
}

bool TActs::Add()
{
    QList<QToolButton*> buttons;
    for (QToolButton* button : Reachable<QToolButton>(d_window)) {
        if (button->objectName().startsWith("add_")) {
            buttons << button;
        }
    }
    if (buttons.isEmpty()) {
        return false;
    }
    QToolButton* button = d_random->Pick(buttons);
    Journal::Note("press " + Widget_Name(button));
    User_Input::Click(button, button->rect().center());
    return true;
}

// An expression for one identifier of an item: chance alone would rarely get there.
bool TActs::Replace_Expression()
{
    auto* tree = Child<QAbstractItemView>(d_window, "budget_tree");
    auto* identifiers = Child<QAbstractItemView>(d_window, "identifier_list");
    auto* use_default = Child<QAbstractButton>(d_window, "use_default_expression");
    auto* expression = Child<QLineEdit>(d_window, "expression");

    Journal::Note("replace an expression");
    User_Input::Press(d_window, Qt::Key_C, Qt::AltModifier);
    const QModelIndex entry = Random_Entry(tree, d_random);
    if (!tree->isVisible() || !entry.parent().parent().isValid()) {
        return false;
    }
    Select(tree, entry);
    const QModelIndex identifier = Random_Entry(identifiers, d_random);
    if (!identifier.isValid()) {
        return false;
    }
    Select(identifiers, identifier);
    if (use_default->isEnabled() && !expression->isEnabled()) {
        User_Input::Click(use_default, QPoint(10, use_default->height() / 2));
    }
    if (!expression->isEnabled()) {
        return false;
    }
    Fill(expression);
    return true;
}

// Members for a group, which otherwise has none that are still there.
bool TActs::Gather()
{
    auto* groups = Child<QAbstractItemView>(d_window, "group_list");
    auto* members = Child<QAbstractItemView>(d_window, "component_list");

    Journal::Note("gather members");
    User_Input::Press(d_window, Qt::Key_G, Qt::AltModifier);
    const QModelIndex group = Random_Entry(groups, d_random);
    if (!groups->isVisible() || !group.isValid()) {
        return false;
    }
    Select(groups, group);
    for (int click = 1 + d_random->Below(MOST_MEMBERS); click > 0 && members->isEnabled(); --click) {
        const QModelIndex member = Random_Entry(members, d_random);
        if (member.isValid()) {
            Select(members, member);
        }
    }
    return true;
}

// The list that opens gets its answer with other lists.
bool TActs::Choose_Group()
{
    auto* box = Child<QWidget>(d_window, "report_group");

    Journal::Note("choose a group");
    User_Input::Press(d_window, Qt::Key_R, Qt::AltModifier);
    if (!box->isVisible()) {
        return false;
    }
    User_Input::Click(box, box->rect().center());
    return true;
}

bool TActs::Close()
{
    // Work goes on for a while between two starts of the program.
    if (!d_random->Chance(RESTART_PERCENT)) {
        return false;
    }
    Journal::Note("close the window");
    d_window->close();
    return true;
}

// Mostly on the page in front, where most can happen.
QWidget* TActs::Random_Widget() const
{
    const QWidget* page = Child<QTabWidget>(d_window, "pages")->currentWidget();
    const QList<QWidget*> lively = Lively_Widgets(d_window);
    QList<QWidget*> on_page;
    std::copy_if(lively.begin(), lively.end(), std::back_inserter(on_page),
                 [page](const QWidget* widget) { return page->isAncestorOf(widget); });

    if (!on_page.isEmpty() && d_random->Chance(75)) {
        return d_random->Pick(on_page);
    }
    return d_random->Pick(d_random->Chance(60) ? lively : Reachable_Widgets(d_window));
}

QPoint TActs::Random_Place(QWidget* widget) const
{
    return Random_Position(widget, d_random);
}
