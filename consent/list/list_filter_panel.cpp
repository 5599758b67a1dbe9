#include "consent/list/list_filter_panel.h"

#include "app/base/messages.h"
#include "ui_list_filter_panel.h"
#include "widgets/flow_layout.h"

#include <QKeySequence>
#include <QScopedValueRollback>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

// Pointers only: a pair belongs to its code box.
struct ListFilterPanel::Pairs {
    CodeNamePair *doctor, *hospital, *facility, *staff, *insurer, *counsellor, *patient;

    std::array<CodeNamePair *, 7> all() const {
        return {doctor, hospital, facility, staff, insurer, counsellor, patient};
    }
};

ListFilterPanel::ListFilterPanel(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ListFilterPanel>()) {
    m_ui->setupUi(this);
    auto *range = new FlowLayout(m_ui->boxRange);
    for (QWidget *part : std::initializer_list<QWidget *>{m_ui->boxKikan, m_ui->boxRireki, m_ui->boxSejutuKbn,
                                                          m_ui->boxTejun, m_ui->chkEndKanja})
        range->addWidget(part);
    m_ui->lblTantou->setBackgroundRole(QPalette::ToolTipBase);
    m_ui->lblTantou->setForegroundRole(QPalette::ToolTipText);
    m_ui->lblTantou->hide();
    connect(m_ui->txt_SiboriName, &QLineEdit::textChanged, this, &ListFilterPanel::narrowed);
    connect(m_ui->txt_SiboriKana, &QLineEdit::textChanged, this, &ListFilterPanel::narrowed);
    for (const QLineEdit *box : {m_ui->txt_SiboriName, m_ui->txt_SiboriKana})
        connect(box, &QLineEdit::returnPressed, this, &ListFilterPanel::listWanted);
    connect(m_ui->but_Read, &QPushButton::clicked, this, &ListFilterPanel::searchAsked);
    connect(m_ui->but_Clear, &QPushButton::clicked, this, &ListFilterPanel::clearAsked);
    watchEntries();
}

void ListFilterPanel::watchEntries() {
    for (const QRadioButton *option : findChildren<QRadioButton *>())
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                Q_EMIT chosen();
        });
    connect(m_ui->chkEndKanja, &QCheckBox::toggled, this, &ListFilterPanel::chosen);
    for (const DateBox *box : {m_ui->imD_KikanFrom, m_ui->imD_KikanTo}) {
        connect(box, &DateBox::dateChanged, this, &ListFilterPanel::chosen);
        connect(box, &QLineEdit::textEdited, this, &ListFilterPanel::typed);
    }
    for (const CodeBox *box : findChildren<CodeBox *>())
        connect(box, &QLineEdit::textEdited, this, &ListFilterPanel::typed);
    connect(m_ui->txtIraiHouhou, &QLineEdit::textChanged, this, &ListFilterPanel::typed);
}

ListFilterPanel::~ListFilterPanel() = default;

void ListFilterPanel::setSearches(const ListSearches &searches, Messages &messages) {
    const auto pair = [&](CodeBox *code, QLineEdit *name, QPushButton *button, const CodeSearch &search) {
        return new CodeNamePair(code, name, button, search, messages);
    };
    m_pairs = std::make_unique<Pairs>(Pairs{
        pair(m_ui->txtcDoctorNo, m_ui->txtcDoctorName, m_ui->btnSelDoctor, searches.doctor),
        pair(m_ui->txtcSisetsuNo, m_ui->txtcSisetsuName, m_ui->btnSelSisetsu, searches.hospital),
        pair(m_ui->txtcSisetsuNo2, m_ui->txtcSisetsuName2, m_ui->btnSelSisetsu2, searches.facility),
        pair(m_ui->txtcSejutsuNo, m_ui->txtcSejutsuName, m_ui->btnSelSejutsu, searches.staff),
        pair(m_ui->txtcHokenshaNo, m_ui->txtcHokenshaName, m_ui->btnSelHokensha, searches.insurer),
        pair(m_ui->txtcSoudanshaNo, m_ui->txtcSoudanshaName, m_ui->btnSelSoudansha, searches.counsellor),
        pair(m_ui->txtcRiyoushaNo, m_ui->txtcRiyoushaName, m_ui->btnSelRiyousha, searches.patient)});
    connect(m_pairs->patient, &CodeNamePair::changed, this, [this](const CodeName &row) {
        m_patientBefore = std::exchange(m_patient, row);
        if (!m_takingBack && !row.code.isEmpty())
            Q_EMIT patientChosen(row.code.toInt());
    });
    for (const CodeNamePair *one : m_pairs->all())
        connect(one, &CodeNamePair::changed, this, &ListFilterPanel::chosen);
}

bool ListFilterPanel::settleAll() {
    if (!isSettled())
        Q_EMIT sightWanted();
    for (DateBox *box : {m_ui->imD_KikanFrom, m_ui->imD_KikanTo}) {
        if (box->settle())
            continue;
        box->setFocus();
        return false;
    }
    if (m_pairs)
        for (CodeNamePair *pair : m_pairs->all())
            if (!pair->settle())
                return false;
    return true;
}

bool ListFilterPanel::read(ListFilter &filter) {
    if (!settleAll())
        return false;
    readSettled(filter);
    return true;
}

bool ListFilterPanel::isSettled() const {
    const bool range = m_ui->imD_KikanFrom->isSettled() && m_ui->imD_KikanTo->isSettled();
    return range && (!m_pairs || std::ranges::all_of(m_pairs->all(), &CodeNamePair::isSettled));
}

void ListFilterPanel::readSettled(ListFilter &filter) const {
    filter.from = m_ui->imD_KikanFrom->date();
    filter.to = m_ui->imD_KikanTo->date();
    filter.view = m_ui->optRireki_1->isChecked() ? ListView::History : ListView::Newest;
    filter.kind = m_ui->optSejutuKbn_1->isChecked()   ? TreatmentKind::Massage
                  : m_ui->optSejutuKbn_2->isChecked() ? TreatmentKind::Acupuncture
                                                      : TreatmentKind::All;
    filter.procedure = m_ui->optTejun_1->isChecked()   ? Procedure::Written
                       : m_ui->optTejun_2->isChecked() ? Procedure::Oral
                                                       : Procedure::All;
    filter.ended = m_ui->chkEndKanja->isChecked();
    filter.requestMethod = m_ui->txtIraiHouhou->text();
    filter.requestMethod.remove(u' ').remove(u'\u3000');
    if (!m_pairs)
        return;
    filter.doctor = m_pairs->doctor->row().code;
    filter.hospital = m_pairs->hospital->row().code.toInt();
    filter.facility = m_pairs->facility->row().code.toInt();
    filter.staff = m_pairs->staff->row().code.toInt();
    filter.insurer = m_pairs->insurer->row().code;
    filter.counsellor = m_pairs->counsellor->row().code.toInt();
    filter.patient = m_pairs->patient->row().code.toInt();
    filter.names.clear();
    const auto addName = [&](const QString &caption, const CodeNamePair *pair) {
        if (!pair->row().code.isEmpty())
            filter.names.push_back({caption, pair->row().name});
    };
    addName(u"医師"_s, m_pairs->doctor);
    addName(u"施設"_s, m_pairs->hospital);
    addName(u"施設"_s, m_pairs->facility);
    addName(u"施術者"_s, m_pairs->staff);
    addName(u"保険者"_s, m_pairs->insurer);
    addName(u"相談者"_s, m_pairs->counsellor);
    filter.staffAmong.clear();
    for (const CodeName &one : m_staff)
        filter.staffAmong.push_back(one.code.toInt());
    filter.staffOrder = m_staffInOrder;
    if (!m_staff.empty())
        filter.names.push_back({u"施術者"_s, staffNames()});
}

QString ListFilterPanel::staffNames() const {
    constexpr size_t named = 5;
    QStringList names;
    for (const CodeName &one : m_staff)
        names.append(one.name);
    const auto more = qsizetype(m_staff.size()) - qsizetype(named);
    return names.mid(0, named).join(u'、') + (more > 0 ? u" ほか %1 名"_s.arg(more) : QString());
}

void ListFilterPanel::setStaff(const std::vector<CodeName> &staff, bool inOrder) {
    m_staff = staff;
    m_staffInOrder = inOrder && !staff.empty();
    m_ui->lblTantou->setVisible(!staff.empty());
    m_ui->lblTantou->setText(u"施術者の絞り込み：%1%2　（Ctrl+Shift+T で変更）"_s.arg(
        staffNames(), m_staffInOrder ? u"　この順に表示"_s : QString()));
}

void ListFilterPanel::readRange(QDate &from, QDate &to) const {
    if (m_ui->imD_KikanFrom->date().isValid())
        from = m_ui->imD_KikanFrom->date();
    if (m_ui->imD_KikanTo->date().isValid())
        to = m_ui->imD_KikanTo->date();
}

void ListFilterPanel::setRange(const QDate &from, const QDate &to) {
    m_ui->imD_KikanFrom->setDate(from);
    m_ui->imD_KikanTo->setDate(to);
}

void ListFilterPanel::showEnded() {
    m_ui->chkEndKanja->setChecked(true);
}

void ListFilterPanel::clear(const QDate &from, const QDate &to) {
    setRange(from, to);
    m_ui->optRireki_0->setChecked(true);
    m_ui->optSejutuKbn_0->setChecked(true);
    m_ui->optTejun_0->setChecked(true);
    m_ui->chkEndKanja->setChecked(false);
    m_ui->txtIraiHouhou->clear();
    clearNarrowing();
    setStaff({}, false);
    if (m_pairs)
        for (CodeNamePair *pair : m_pairs->all())
            pair->clear();
}

void ListFilterPanel::takeBackPatient() {
    const QScopedValueRollback takingBack(m_takingBack, true);
    m_pairs->patient->setRow(m_patientBefore);
}

void ListFilterPanel::clearNarrowing() {
    m_ui->txt_SiboriName->clear();
    m_ui->txt_SiboriKana->clear();
}

QString ListFilterPanel::narrowName() const {
    return m_ui->txt_SiboriName->text();
}

QString ListFilterPanel::narrowKana() const {
    return m_ui->txt_SiboriKana->text();
}

void ListFilterPanel::showCounts(const QString &text) {
    m_ui->lblCount->setText(text);
}

void ListFilterPanel::focusRange() {
    Q_EMIT sightWanted();
    m_ui->imD_KikanFrom->setFocus();
    m_ui->imD_KikanFrom->selectAll();
}

bool ListFilterPanel::goBy(const QKeySequence &key) {
    for (const QLabel *caption : findChildren<QLabel *>())
        if (caption->buddy() && QKeySequence::mnemonic(caption->text()) == key) {
            Q_EMIT sightWanted();
            caption->buddy()->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
    for (QAbstractButton *button : findChildren<QAbstractButton *>())
        if (!key.isEmpty() && button->shortcut() == key) {
            Q_EMIT sightWanted();
            button->setFocus(Qt::ShortcutFocusReason);
            button->click();
            return true;
        }
    return false;
}
