#include "masters/master_input_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/request_methods.h"
#include "app/base/text.h"
#include "db/adodb.h"
#include "masters/master_inputs.h"
#include "masters/postal_box.h"
#include "masters/postal_search_form.h"
#include "print/consent_screens/doctor_consent_form.h"
#include "print/documents/lost_texts.h"
#include "search/master_search_form.h"
#include "search/staff_search_form.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"
#include "widgets/enter_moves_on.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString addressTitle = u"住所検索"_s;
const QString postalTitle = u"郵便番号検索"_s;

/// What a doctor's row takes over of the facility that is chosen.
const std::pair<QString, QString> facilityItems[] = {
    {u"cKikan"_s, u"cShamei1"_s},     {u"cKikanKana"_s, u"cShameiKana1"_s},
    {u"cDaihyo"_s, u"cDaihyo"_s},     {u"cDaihyoKana"_s, u"cDaihyoKana"_s},
    {u"cYubinNo"_s, u"cYubinNo"_s},   {u"cAddress1"_s, u"cAddress1"_s},
    {u"cAddress2"_s, u"cAddress2"_s}, {u"cTelNo"_s, u"cTelNo"_s},
    {u"cFaxNo"_s, u"cFaxNo"_s},       {u"cAddressKana"_s, u"cAddressKana"_s},
};

QStringList methodsOf(const Environment &environment, QString &oddity) {
    const Result<RequestMethods> methods = readRequestMethods(environment.folders);
    oddity = methods.reason();
    QStringList texts = methods ? methods->texts : QStringList();
    texts.removeAll(QString());
    return texts;
}

/// The fields that the database has a column for.
MasterDescription describe(MasterEditor &editor, MasterKind kind, QString &oddity) {
    MasterDescription description =
        describeMaster(kind, editor.environment().branch, methodsOf(editor.environment(), oddity));
    std::erase_if(description.fields, [&](const MasterField &field) {
        return !field.table.isEmpty() && !editor.db().hasColumn(field.table, field.column);
    });
    return description;
}

/// A practice that keeps its own patients has nobody who registers insurers: the number of the card will do.
CodeLookup lookUp(const MasterField &field, SearchClass &search, const QString &code) {
    const CodeLookup found = search.lookup(code);
    return field.kind != MasterField::Insurer || found.found() || found.failed
               ? found
               : CodeLookup{{code, u"登録のない保険者"_s}, {}};
}

} // namespace

MasterInputForm::MasterInputForm(MasterEditor &editor, MasterKind kind, QWidget *parent)
    : QDialog(parent),
      m_editor(editor),
      m_description(describe(editor, kind, m_oddity)),
      m_entry(m_description, editor.db()) {
    setObjectName(m_description.inputForm);
    layOut();
    setClock(*this, editor.environment().clock);
    new EnterMovesOn(this);
    // Where codes stand beside one another they need more room.
    const int characters = m_picks.size() > 1 ? 86 : 56;
    const int besideInputs = layout()->sizeHint().height() - m_scroll->sizeHint().height();
    resize(QSize(fontMetrics().horizontalAdvance(u'漢') * characters,
                 m_scroll->widget()->sizeHint().height() + besideInputs + 4)
               .boundedTo(screen()->availableSize() * 95 / 100));
}

MasterInputForm::~MasterInputForm() = default;

void MasterInputForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    // A large font or a small screen leaves no room for all of them.
    m_scroll = new QScrollArea;
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    auto *inputs = new QWidget;
    auto *grid = new QGridLayout(inputs);
    grid->setContentsMargins(0, 0, 4, 0);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    int row = 0;
    bool left = true;
    for (const MasterField &field : m_description.fields) {
        if (field.wide && !left)
            ++row; // the place beside the last one stays empty
        add(*grid, field, row, field.wide || left ? 0 : 2, field.wide ? 3 : 1);
        row += field.wide || !left ? 1 : 0;
        left = field.wide || !left;
    }
    grid->setRowStretch(row + 1, 1);
    m_scroll->setWidget(inputs);
    layout->addWidget(m_scroll, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    const auto button = [&](const QString &name, const QString &caption, const QString &key) {
        auto *made = new QPushButton(caption);
        made->setObjectName(name);
        made->setShortcut(key);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    if (m_description.kind == MasterKind::Doctor)
        connect(button(u"btnDouiSyosikiSet"_s, u"同意書式設定 (F9)"_s, u"F9"_s), &QPushButton::clicked, this,
                [this] { setLayouts(); });
    connect(button(u"btnRegist"_s, u"登録 (F5)"_s, u"F5"_s), &QPushButton::clicked, this, [this] {
        if (iDataSave() == 0)
            accept();
    });
    connect(button(u"btnEnd"_s, u"終了 (F12)"_s, u"F12"_s), &QPushButton::clicked, this,
            [this] { reject(); });
    layout->addLayout(buttons);
}

void MasterInputForm::add(QGridLayout &grid, const MasterField &field, int row, int column, int span) {
    QWidget *input = makeInput(field);
    input->setObjectName(field.column);
    m_inputs.push_back({&field, input, {}});
    if (field.kind == MasterField::Tick) {
        grid.addWidget(input, row, column + 1, 1, span);
        return;
    }
    input->setAccessibleName(field.caption);
    auto *caption = new QLabel(field.caption);
    caption->setBuddy(input);
    grid.addWidget(caption, row, column);
    QWidget *placed = input;
    if (field.kind == MasterField::PostalCode)
        placed = withButton(input, u"btnYubin"_s, u"住所検索 (F7)"_s, &MasterInputForm::findAddress);
    else if (field.kind == MasterField::Address)
        placed = withButton(input, u"btnAdd"_s, u"郵便番号検索 (F8)"_s, &MasterInputForm::findPostalCode);
    else if (field.isCodeOfMaster())
        placed = input->parentWidget();
    grid.addWidget(placed, row, column + 1, 1, span);
}

QWidget *MasterInputForm::makeInput(const MasterField &field) {
    return field.isCodeOfMaster() ? codeInput(field)
                                  : makeMasterInput(field, !m_description.preset.contains(field.column));
}

QWidget *MasterInputForm::withButton(QWidget *input, const QString &name, const QString &caption,
                                     void (MasterInputForm::*work)()) {
    auto *both = new QWidget;
    auto *row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setShortcut(name == u"btnYubin" ? u"F7"_s : u"F8"_s);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::ClickFocus);
    connect(button, &QPushButton::clicked, this, work);
    row->addWidget(input);
    row->addWidget(button);
    if (qobject_cast<PostalBox *>(input))
        row->addStretch();
    return both;
}

std::unique_ptr<SearchClass> MasterInputForm::searchOf(MasterField::Kind kind) {
    cT_ADODB &db = m_editor.db();
    Environment &environment = m_editor.environment();
    const auto edited = [&](std::unique_ptr<SearchClass> made, MasterKind master) {
        if (m_editor.mayEdit(master))
            made->setEditor(
                [this, master](const QString &code, QWidget *list) { return editOther(master, code, list); });
        return made;
    };
    const auto search = [&](Master master, MasterKind edit) {
        return edited(std::make_unique<MasterSearch>(master, db, environment), edit);
    };
    switch (kind) {
    case MasterField::Doctor:
        return search(Master::Doctor, MasterKind::Doctor);
    case MasterField::Insurer:
        return std::make_unique<MasterSearch>(Master::Insurer, db, environment);
    case MasterField::Staff:
        return edited(std::make_unique<cls施術者検索>(db, environment), MasterKind::Staff);
    case MasterField::Counsellor:
        return search(Master::Counsellor, MasterKind::Counsellor);
    case MasterField::Home:
        return search(Master::LivingFacility, MasterKind::Facility);
    default:
        return search(Master::Facility, MasterKind::Facility);
    }
}

QWidget *MasterInputForm::codeInput(const MasterField &field) {
    auto *both = new QWidget;
    auto *row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    auto *code = new CodeBox;
    auto *name = new QLineEdit;
    const bool isOnly = field.kind == MasterField::Facility;
    auto *pick = new QPushButton(isOnly ? u"選択 (&I)"_s : u"選択"_s);
    code->setDigits(field.bytes);
    code->setToolTip(u"番号を入力して Enter。一覧から選ぶには ↓"_s);
    name->setObjectName(isOnly ? u"SISETSUSHAMEI"_s : field.column + u"Name"_s);
    pick->setObjectName(isOnly ? u"btnSelSisetsu"_s : u"btn"_s + field.column);
    if (!isOnly) // the name wants the room
        pick->setFixedWidth(fontMetrics().horizontalAdvance(u"　選択　"_s));
    pick->setAutoDefault(false);
    pick->setFocusPolicy(Qt::ClickFocus);
    row->addWidget(code);
    row->addWidget(name, 1);
    row->addWidget(pick);
    Messages &messages = m_editor.environment().messages;
    std::unique_ptr<SearchClass> search = searchOf(field.kind);
    CodeSearch ways = codeSearch(*search, messages);
    ways.lookup = [&field, &found = *search](const QString &typed) { return lookUp(field, found, typed); };
    auto *pair = new CodeNamePair(code, name, pick, std::move(ways), messages);
    m_picks.push_back({&field, std::move(search), pair});
    name->setAccessibleName(field.caption + u"の名称"_s);
    return code;
}

const MasterInputForm::Pick &MasterInputForm::pickOf(const MasterField &field) const {
    return *std::ranges::find(m_picks, &field, &Pick::field);
}

/// The first column of a kind; empty when there is none.
QString MasterInputForm::columnOf(MasterField::Kind kind) const {
    const auto found = std::ranges::find(m_description.fields, kind, &MasterField::kind);
    return found == m_description.fields.end() ? QString() : found->column;
}

short MasterInputForm::iInit(const QString &code) {
    const Result<> opened = code.isEmpty() ? m_entry.openNew() : m_entry.open(code);
    if (!opened) {
        m_error = opened.reason();
        return -1;
    }
    if (!m_oddity.isEmpty())
        m_editor.environment().messages.failIn(m_oddity, u"iInit()でエラー");
    setWindowTitle(m_description.noun + (m_entry.isNew() ? u"登録（新規）"_s : u"登録（修正）"_s));
    showValues();
    if (m_description.kind == MasterKind::Doctor)
        connect(m_picks.front().pair, &CodeNamePair::changed, this,
                [this](const CodeName &row) { takeFacility(row.code); });
    auto *number = static_cast<CodeBox *>(input(m_description.codeColumn));
    number->setReadOnly(!m_entry.isNew());
    number->setFocusPolicy(m_entry.isNew() ? Qt::StrongFocus : Qt::NoFocus);
    goTo(m_description.nameColumn);
    return 0;
}

void MasterInputForm::showValues() {
    for (Input &each : m_inputs) {
        const QString text = m_entry.value(each.field->column);
        if (each.field->isCodeOfMaster()) {
            const Pick &pick = pickOf(*each.field);
            const CodeLookup found = text.isEmpty() ? CodeLookup() : lookUp(*each.field, *pick.search, text);
            if (m_description.kind == MasterKind::Doctor)
                m_facilityValues = facility(text);
            pick.pair->setRow({text, found.found() ? found.row.name : found.reason});
        } else if (each.field->kind == MasterField::PostalCode && !postalDigits(text).isEmpty()) {
            showIn(each.widget, postalText(postalDigits(text)));
        } else {
            showIn(each.widget, text);
        }
        each.shown = textIn(each.widget);
    }
}

void MasterInputForm::take() {
    for (Input &each : m_inputs)
        if (const QString text = textIn(each.widget); text != each.shown) {
            m_entry.setValue(each.field->column, text);
            each.shown = text;
        }
}

QWidget *MasterInputForm::input(const QString &column) const {
    const auto found =
        std::ranges::find(m_inputs, column, [](const Input &each) { return each.field->column; });
    return found == m_inputs.end() ? nullptr : found->widget;
}

QString MasterInputForm::textOf(const QString &column) const {
    return textIn(input(column));
}

void MasterInputForm::setText(const QString &column, const QString &text) {
    showIn(input(column), text);
}

void MasterInputForm::goTo(const QString &column) {
    QWidget *wanted = input(column);
    wanted->setFocus(Qt::OtherFocusReason);
    m_scroll->ensureWidgetVisible(wanted);
    if (auto *line = qobject_cast<QLineEdit *>(wanted))
        line->selectAll();
}

MasterValues MasterInputForm::facility(const QString &code) const {
    if (!code.isEmpty())
        if (const auto read = makeMasterStore(MasterKind::Facility, m_editor.db())->read(code); read && *read)
            return **read;
    return {};
}

// What is empty, or repeats the facility that was in force, follows the one that is chosen.
void MasterInputForm::takeFacility(const QString &code) {
    const MasterValues fresh = facility(code);
    for (const auto &[own, ofFacility] : facilityItems)
        if (const QString now = textOf(own); !fresh.value(ofFacility).isEmpty() &&
                                             (now.isEmpty() || now == m_facilityValues.value(ofFacility)))
            setText(own, fresh.value(ofFacility));
    m_facilityValues = fresh;
}

// Mending another master's row may have written this one too.
std::optional<QString> MasterInputForm::editOther(MasterKind kind, const QString &code, QWidget *parent) {
    const std::optional<QString> saved = m_editor.edit(kind, code, parent);
    if (!saved)
        return saved;
    take();
    if (const Result<> read = m_entry.reread(); !read)
        m_editor.environment().messages.fail(read.reason());
    showValues();
    return saved;
}

const PostalCodes *MasterInputForm::postalCodes(const QString &title) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const Result<const PostalCodes *> codes = m_editor.postalBook().codes();
    QApplication::restoreOverrideCursor();
    Messages &messages = m_editor.environment().messages;
    if (!codes)
        messages.warn(codes.reason(), title);
    else if (const QString oddity = m_editor.postalBook().takeOddity(); !oddity.isEmpty())
        messages.warn(oddity, title);
    return codes ? *codes : nullptr;
}

void MasterInputForm::findAddress() {
    Messages &messages = m_editor.environment().messages;
    const QString digits = postalDigits(textOf(columnOf(MasterField::PostalCode)));
    if (digits.size() < 3) {
        messages.note(u"郵便番号を3桁以上入力してください。"_s);
        goTo(columnOf(MasterField::PostalCode));
        return;
    }
    if (const PostalCodes *codes = postalCodes(addressTitle))
        if (const auto place = choosePlace(messages, addressTitle, codes->withCode(digits), this))
            takeAddress(*place);
}

void MasterInputForm::findPostalCode() {
    Messages &messages = m_editor.environment().messages;
    if (textOf(columnOf(MasterField::Address)).isEmpty()) {
        messages.note(u"住所を入力してください。"_s);
        goTo(columnOf(MasterField::Address));
        return;
    }
    if (const PostalCodes *codes = postalCodes(postalTitle))
        if (const auto place = choosePlace(messages, postalTitle,
                                           codes->ofAddress(textOf(columnOf(MasterField::Address))), this))
            setText(columnOf(MasterField::PostalCode), postalText(place->code));
}

// An address that lies in the place keeps its house number; another one goes only when the user says so.
void MasterInputForm::takeAddress(const PostalPlace &place) {
    setText(columnOf(MasterField::PostalCode), postalText(place.code));
    const QString before = textOf(columnOf(MasterField::Address));
    if (!before.startsWith(place.address())) {
        if (!before.isEmpty() &&
            !m_editor.environment().messages.ask(
                u"住所「%1」を「%2」に置き換えます。\r\nよろしいですか？"_s.arg(before, place.address()),
                addressTitle))
            return;
        setText(columnOf(MasterField::Address), place.address());
        if (input(u"cAddressKana"_s))
            setText(u"cAddressKana"_s, toFullWidth(place.kana));
    }
    auto *address = static_cast<QLineEdit *>(input(columnOf(MasterField::Address)));
    address->setFocus();
    address->end(false);
}

// What is registered there is stored with the doctor.
void MasterInputForm::setLayouts() {
    frmDouiSubmainIshi form(m_editor.environment(), this);
    if (form.iInit(m_editor.db(), m_entry.layouts(), frmDouiSubmainIshi::Doctor) != 0) {
        m_editor.environment().messages.fail(form.sErrMsg(), u"同意書式設定画面：初期化エラー"_s);
        return;
    }
    form.exec();
    if (form.isRegistered())
        m_entry.setLayouts(form.settings());
}

bool MasterInputForm::refused(const MasterObjection &objection) {
    if (objection.text.isEmpty())
        return false;
    m_editor.environment().messages.warn(objection.text);
    goTo(objection.column);
    return true;
}

// False: the save was given up, or who repeats the row could not be read.
bool MasterInputForm::mayCopy(bool &copy) {
    copy = false;
    if (!m_entry.changesRepeated())
        return true;
    Messages &messages = m_editor.environment().messages;
    const Result<MasterUses> uses = m_entry.uses();
    if (!uses) {
        messages.failIn(uses.reason(), u"iDataSaveでエラー");
        return false;
    }
    if (uses->none())
        return true;
    const Answer answer =
        messages.show({u"この%1は、%2 で使われています。\r\n変更した内容を、%3にも反映しますか？"_s.arg(
                           m_description.noun, usesText(*uses), m_description.repeaters),
                       MessageIcon::Question, u"登録確認"_s, MessageButtons::YesNoCancel, Answer::Yes});
    copy = answer == Answer::Yes;
    return answer != Answer::Cancel;
}

short MasterInputForm::iDataSave() {
    Messages &messages = m_editor.environment().messages;
    if (!std::ranges::all_of(m_picks, [](const Pick &pick) { return pick.pair->settle(); }))
        return -1;
    take();
    const QString proposed = code();
    const bool mayRenumber = m_entry.isNew() && m_entry.isNumberProposed();
    if (refused(m_entry.whyWrong()))
        return -1;
    const Result<MasterObjection> overtaken = m_entry.whyOvertaken();
    if (!overtaken) {
        messages.failIn(overtaken.reason(), u"iDataSaveでエラー");
        return -1;
    }
    bool copy = false;
    if (refused(*overtaken) ||
        !mayLose(messages, replacedNote(m_editor.environment(), m_entry.lostTexts()), u"登録確認"_s,
                 u"内容を登録しますか？"_s) ||
        !mayCopy(copy))
        return -1;
    const MasterOutcome outcome = m_entry.save(copy);
    if (outcome.kind == MasterOutcome::Refused)
        messages.warn(outcome.text);
    else if (outcome.kind == MasterOutcome::Failed)
        messages.failIn(outcome.text, u"iDataSaveでエラー");
    else if (mayRenumber && code() != proposed)
        messages.note(u"番号 %1 は先に使われたので、%2 で登録しました。"_s.arg(proposed, code()));
    else
        messages.note(u"登録しました。"_s);
    return outcome.kind == MasterOutcome::Done ? 0 : -1;
}

void MasterInputForm::reject() {
    take();
    if (!m_entry.isChanged() ||
        m_editor.environment().messages.ask(u"入力した内容を登録しないで終了します。\r\nよろしいですか？"_s,
                                            u"終了問合せ"_s, Answer::No))
        QDialog::reject();
}
