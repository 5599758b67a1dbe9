#include "consent/answers/answers_form.h"

#include "app/base/clock.h"
#include "app/base/messages.h"
#include "consent/merge/merge_form.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"
#include "widgets/key_button.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr size_t mostHits = 20;
constexpr int hitsShown = 5;

} // namespace

AnswersForm::AnswersForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_desk(environment, db), m_log(m_desk) {
    setObjectName(u"frmHenji"_s);
    setWindowTitle(u"返事の入力"_s);
    layOut();
    wire();
}

void AnswersForm::layOut() {
    auto *layout = new QVBoxLayout(this);
    auto *line = new QGridLayout;
    addInput(*line, 0, u"利用者（番号・カナ・氏名）(&N)"_s, m_who = new QLineEdit(this), u"txtRiyousha"_s);
    addInput(*line, 1, u"同意(&K)"_s, m_consent = new QComboBox(this), u"cmbDoui"_s);
    addInput(*line, 2, u"再同意日(&D)"_s, m_day = new DateBox(this), u"imD_Saidoui"_s);
    addInput(*line, 3, u"要加療開始(&S)"_s, m_start = new DateBox(this), u"imD_KaryoS"_s);
    addInput(*line, 4, u"要加療終了(&E)"_s, m_end = new DateBox(this), u"imD_KaryoE"_s);
    m_record = keyButton(u"cmdTouroku"_s, u"登録"_s, u"F5"_s,
                         u"この行の返事を登録します（Enter でも登録します）"_s, this);
    line->addWidget(m_record, 1, 5);
    line->setColumnStretch(0, 3);
    line->setColumnStretch(1, 4);
    m_consent->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_consent->setMinimumContentsLength(10);
    layout->addLayout(line);

    m_said = new QLabel(this);
    m_said->setObjectName(u"lblSaid"_s);
    m_said->setWordWrap(true);
    m_said->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_said->setMinimumHeight(2 * fontMetrics().lineSpacing());
    layout->addWidget(m_said);

    m_list = new QListWidget(this);
    m_list->setObjectName(u"lstKouho"_s);
    m_list->setAccessibleName(u"利用者の候補"_s);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setFixedHeight((hitsShown * 5 + 1) * fontMetrics().height() / 4 + 2 * m_list->frameWidth());
    layout->addWidget(m_list);

    m_grid = new Grid(this);
    m_grid->setObjectName(u"ssHenji"_s);
    m_grid->setAccessibleName(u"入力した返事"_s);
    m_grid->setModel(&m_log);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    layout->addWidget(m_grid, 1);

    auto *foot = new QHBoxLayout;
    m_counts = new QLabel(this);
    m_counts->setObjectName(u"lblCounts"_s);
    m_back = keyButton(u"cmdTorikeshi"_s, u"取り消し"_s, u"Ctrl+Z"_s,
                       u"最後に登録した返事（下の表では選んだ行）を取り消します"_s, this);
    m_close = keyButton(u"cmdEnd"_s, u"閉じる"_s, u"F12"_s, u"一覧に戻ります"_s, this);
    foot->addWidget(m_counts, 1);
    foot->addWidget(m_back);
    foot->addWidget(m_close);
    layout->addLayout(foot);
    const QSize wanted(m_grid->widthOf(74), fontMetrics().height() * 34);
    resize(wanted.boundedTo(screen()->availableSize() * 95 / 100));
}

void AnswersForm::addInput(QGridLayout &line, int column, const QString &caption, QWidget *input,
                           const QString &name) {
    auto *label = new QLabel(caption, this);
    label->setBuddy(input);
    input->setObjectName(name);
    input->installEventFilter(this);
    line.addWidget(label, 0, column);
    line.addWidget(input, 1, column);
}

void AnswersForm::wire() {
    m_grid->installEventFilter(this);
    setClock(*this, m_environment.clock);
    // What the rule proposes is passed over: from the date the answer is written.
    for (DateBox *box : {m_day, m_end})
        connect(box, &QLineEdit::returnPressed, this, [this] { record(); });
    connect(m_start, &QLineEdit::returnPressed, m_end, [this] { m_end->setFocus(); });
    connect(m_who, &QLineEdit::textEdited, this, [this] { showHits(); });
    connect(m_consent, &QComboBox::currentIndexChanged, this,
            [this](int consent) { chooseConsent(consent); });
    connect(m_day, &QLineEdit::textChanged, this, [this] { showProposal(); });
    connect(m_record, &QPushButton::clicked, this, [this] { record(); });
    connect(m_back, &QPushButton::clicked, this, [this] { takeBackChosen(); });
    connect(m_close, &QPushButton::clicked, this, [this] { reject(); });
    connect(m_list, &QListWidget::itemActivated, this, [this] { takeHit(); });
}

short AnswersForm::iInit() {
    const Result<> begun = m_desk.begin();
    if (!begun) {
        m_error = begun.reason();
        return -1;
    }
    showLog(0);
    clearLine();
    if (!m_desk.unreadSettings().isEmpty())
        say(m_desk.unreadSettings() + u"　期間は提案されません。"_s, Tone::Warning);
    return 0;
}

// The line stays what it was until a patient is taken.
void AnswersForm::showHits() {
    m_open = false;
    m_hits = m_desk.find(m_who->text(), mostHits);
    m_list->clear();
    for (const AnswerPatient *hit : m_hits)
        m_list->addItem(hitText(*hit, m_environment.clock.today()));
    m_list->setCurrentRow(0);
    const bool none = m_hits.empty() && !m_who->text().trimmed().isEmpty();
    say(none ? u"該当する利用者がいません。番号、カナ、氏名のどれかで入力してください。"_s : QString(),
        none ? Tone::Warning : Tone::Plain);
}

void AnswersForm::takeHit() {
    const int row = m_list->currentRow();
    if (row >= 0 && size_t(row) < m_hits.size())
        openPatient(AnswerPatient(*m_hits[size_t(row)]));
    else if (m_who->text().trimmed().isEmpty())
        say(u"利用者の番号、カナ、氏名のどれかを入力してください。"_s, Tone::Warning);
}

void AnswersForm::openPatient(const AnswerPatient &patient) {
    if (const Result<> opened = m_desk.open(patient); !opened) {
        m_environment.messages.fail(opened.reason(), u"DB-error"_s);
        return;
    }
    m_patient = patient;
    const int likeliest = m_desk.likeliest();
    m_open = likeliest >= 0;
    m_who->setText(patient.who());
    m_list->clear();
    {
        const QSignalBlocker quiet(m_consent);
        m_consent->clear();
        m_consent->addItems(m_desk.consents());
        m_consent->setCurrentIndex(likeliest);
    }
    m_consent->setFocusPolicy(m_desk.consents().size() > 1 ? Qt::StrongFocus : Qt::NoFocus);
    chooseConsent(likeliest);
    if (!m_open)
        m_who->selectAll();
    else if (m_desk.needsChoice())
        m_consent->setFocus();
    else
        m_day->setFocus();
}

void AnswersForm::chooseConsent(int consent) {
    say(m_desk.notice(consent), Tone::Warning);
    if (consent < 0)
        return;
    m_day->setDate(m_desk.proposedDay(consent));
    showProposal();
    m_day->selectAll();
}

// The period is shown while the date is being typed; an hour's work later nobody looks again.
void AnswersForm::showProposal() {
    m_asked.clear();
    if (!m_open)
        return;
    const Period period = m_desk.proposedPeriod(m_consent->currentIndex(), m_day->date());
    m_start->setDate(period.start);
    m_end->setDate(period.end);
    if (!m_desk.trouble().isEmpty())
        say(m_desk.trouble(), Tone::Warning);
}

void AnswersForm::clearLine() {
    m_open = false;
    m_asked.clear();
    m_hits.clear();
    m_list->clear();
    {
        const QSignalBlocker quiet(m_consent);
        m_consent->clear();
    }
    m_consent->setFocusPolicy(Qt::NoFocus);
    m_who->setText({}); // not to be undone, as clear() is
    for (DateBox *box : {m_day, m_start, m_end})
        box->setDate({});
    m_who->setFocus();
}

void AnswersForm::showLog(int row) {
    m_log.refresh();
    m_grid->fitColumns(30);
    m_grid->goTo(row, 0);
    m_counts->setText(m_log.countsText());
    m_back->setEnabled(m_log.lastStanding() >= 0);
}

void AnswersForm::say(const QString &text, Tone tone) {
    m_said->setText(text);
    QFont said = font();
    said.setBold(tone == Tone::Warning);
    m_said->setFont(said);
}

ReConsent AnswersForm::typed() const {
    return {m_day->date(), {m_start->date(), m_end->date()}};
}

bool AnswersForm::isComplete() {
    if (!m_open) {
        takeHit();
        return false;
    }
    const std::pair<DateBox *, QString> inputs[] = {{m_day, u"再同意日が入力されていません。"_s},
                                                    {m_start, u"要加療期間が入力されていません。"_s},
                                                    {m_end, u"要加療期間が入力されていません。"_s}};
    for (const auto &[box, missing] : inputs) {
        const bool readable = box->settle();
        if (readable && box->date().isValid())
            continue;
        if (readable || box->toolTip().isEmpty())
            say(missing, Tone::Warning);
        else
            say(box->toolTip(), Tone::Warning);
        box->setFocus();
        return false;
    }
    return true;
}

/// What is asked is answered by the same key once more.
bool AnswersForm::asked(const QString &question) {
    if (question.isEmpty() || question == m_asked)
        return true;
    m_asked = question;
    say(question, Tone::Warning);
    return false;
}

void AnswersForm::record() {
    if (!isComplete())
        return;
    const int consent = m_consent->currentIndex();
    const QStringList questions = m_desk.questions(consent, typed());
    if (!asked(questions.isEmpty() ? QString()
                                   : questions.join(u'　') +
                                         u"　このまま登録するときは、もう一度 Enter を押してください。"_s))
        return;
    const ConsentRowKey key = m_desk.key(consent);
    AnswerOutcome outcome = m_desk.record(consent, typed());
    if (outcome.kind == AnswerOutcome::Overtaken)
        outcome = decideOvertaken(consent);
    m_written =
        m_written || outcome.kind == AnswerOutcome::Written || outcome.kind == AnswerOutcome::Overtaken;
    switch (outcome.kind) {
    case AnswerOutcome::Written:
        showLog(0);
        say(u"%1 %2 の返事を登録しました。"_s.arg(m_log.index(0, AnswerLogModel::Patient).data().toString(),
                                                  m_log.index(0, AnswerLogModel::Kind).data().toString()));
        clearLine();
        return;
    case AnswerOutcome::Overtaken:
        reopen(key);
        [[fallthrough]];
    case AnswerOutcome::Refused:
        m_asked.clear();
        say(outcome.text, Tone::Warning);
        return;
    case AnswerOutcome::Failed:
        m_environment.messages.fail(outcome.text, u"DB-error"_s);
        return;
    }
}

/// Beside what somebody else wrote meanwhile, until it is written or left.
AnswerOutcome AnswersForm::decideOvertaken(int consent) {
    m_written = true;
    for (;;) {
        Result<std::vector<MergeRow>> rows = m_desk.overtakenRows();
        if (!rows)
            return {AnswerOutcome::Failed, rows.reason()};
        const bool gone = std::ranges::none_of(*rows, [](const MergeRow &row) { return row.gone.isEmpty(); });
        if (gone || !decide(m_environment.messages, *rows, MergeForm::Use::Save, this))
            return m_desk.leaveOvertaken();
        const AnswerOutcome outcome = m_desk.recordMerged(consent, *rows);
        if (outcome.kind != AnswerOutcome::Overtaken || !outcome.text.isEmpty())
            return outcome;
    }
}

/// What is typed stays in the line, over the consents as they are now.
void AnswersForm::reopen(const ConsentRowKey &key) {
    const QSignalBlocker quiet(m_consent);
    m_consent->clear();
    m_consent->addItems(m_desk.consents());
    m_consent->setCurrentIndex(m_desk.consentOf(key));
    m_open = m_consent->currentIndex() >= 0;
}

void AnswersForm::takeBackChosen() {
    takeBack(m_grid->hasFocus() ? m_grid->currentIndex().row() : m_log.lastStanding());
}

void AnswersForm::takeBack(int row) {
    if (row < 0) {
        say(u"取り消す返事がありません。"_s, Tone::Warning);
        return;
    }
    const AnswerOutcome outcome = m_desk.takeBack(m_log.positionOf(row));
    if (outcome.kind == AnswerOutcome::Failed) {
        m_environment.messages.fail(outcome.text, u"DB-error"_s);
        return;
    }
    showLog(row);
    if (m_open) {
        const ConsentRowKey key = m_desk.key(m_consent->currentIndex());
        if (m_desk.open(m_patient))
            reopen(key);
    }
    say(outcome.text, outcome.kind == AnswerOutcome::Written ? Tone::Plain : Tone::Warning);
}

bool AnswersForm::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    // A line box keeps the key for what was typed into it; where nothing was, it goes on to the answers.
    if (key->matches(QKeySequence::Undo)) {
        const auto *box = qobject_cast<QLineEdit *>(watched);
        return event->type() == QEvent::ShortcutOverride && !(box && box->isUndoAvailable());
    }
    if (event->type() == QEvent::ShortcutOverride)
        return false;
    if (watched == m_grid) {
        if (key->key() == Qt::Key_Delete)
            takeBackChosen();
        return key->key() == Qt::Key_Delete;
    }
    if (watched == m_who && (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up)) {
        m_list->setCurrentRow(qBound(0, m_list->currentRow() + (key->key() == Qt::Key_Down ? 1 : -1),
                                     qMax(0, m_list->count() - 1)));
        return true;
    }
    if (key->key() == Qt::Key_Escape && !m_who->text().isEmpty()) {
        clearLine();
        say({});
        return true;
    }
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (!enter || qobject_cast<DateBox *>(watched))
        return false;
    watched == m_who && !m_open ? takeHit() : m_day->setFocus();
    return true;
}

void AnswersForm::reject() {
    const bool holds = m_open && m_day->date().isValid();
    if (asked(
            holds
                ? u"この行の返事は登録されていません。登録しないで閉じるときは、もう一度 F12 を押してください。"_s
                : QString()))
        QDialog::reject();
}
