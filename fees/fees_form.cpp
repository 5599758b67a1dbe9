#include "fees/fees_form.h"

#include "ui_fees_form.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "export/save_grid.h"
#include "fees/band_check.h"
#include "fees/unit_prices.h"
#include "widgets/date_delegate.h"
#include "widgets/enter_moves_on.h"

#include <QHeaderView>
#include <QScreen>
#include <QStandardItemModel>

using namespace Qt::Literals::StringLiterals;

FeesForm::FeesForm(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_ui(std::make_unique<Ui::FeesForm>()),
      m_bands(new BandsModel(this)),
      m_prices(new QStandardItemModel(int(cls単価::prices().size()), 2, this)),
      m_fees(environment) {
    m_ui->setupUi(this);
    m_ui->imD_Tsuki->setUnit(DateBox::Unit::Month);
    m_ui->imD_Tsuki->setClock(environment.clock);
    m_prices->setHorizontalHeaderLabels({u"項目"_s, u"単価(円)"_s});
    m_ui->ssTanka->setModel(m_prices);
    m_ui->ssTanka->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_ui->ssKubun->setModel(m_bands);
    (new CsvButton(environment, *m_ui->ssKubun, u"往療費区分"_s))->insert(*m_ui->rowButtons, *m_ui->cmdSave);
    wire();
    new EnterMovesOn(this);
    const QSize wanted(m_ui->ssKubun->widthOf(76), fontMetrics().height() * 38);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

FeesForm::~FeesForm() = default;

void FeesForm::wire() {
    auto *dates = new DateDelegate(this);
    dates->setClock(m_environment.clock);
    for (const int column : {BandsModel::Start, BandsModel::End})
        m_ui->ssKubun->setItemDelegateForColumn(column, dates);
    const auto refuse = [this](const QString &why) {
        m_refused = true;
        m_environment.messages.warn(why);
    };
    connect(dates, &DateDelegate::rejected, this,
            [=](const QString &text) { refuse(u"「%1」は日付ではありません。"_s.arg(text)); });
    connect(m_bands, &BandsModel::refused, this, refuse);
    connect(m_bands, &BandsModel::edited, this, [this] { showState(); });
    connect(m_ui->ssKubun->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { showState(); });
    connect(m_ui->imD_Tsuki, &DateBox::dateChanged, this, [this] { readMonth(); });
    connect(m_ui->txtKyori, &QLineEdit::textChanged, this, [this] { showFee(); });
    connect(m_ui->chkSaigo, &QCheckBox::toggled, this, [this] { showFee(); });
    connect(m_ui->cmdNew, &QPushButton::clicked, this, [this] { add(); });
    connect(m_ui->cmdEdit, &QPushButton::clicked, this,
            [this] { m_ui->ssKubun->edit(m_ui->ssKubun->currentIndex()); });
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, [this] { remove(); });
    connect(m_ui->cmdSave, &QPushButton::clicked, this, [this] { save(); });
    connect(m_ui->cmdEnd, &QPushButton::clicked, this, [this] { reject(); });
}

short FeesForm::iInit() {
    if (!readEdited())
        return -1;
    m_ui->imD_Tsuki->setDate(m_environment.clock.today());
    m_ui->ssKubun->goTo(m_bands->firstInForce(), BandsModel::Start);
    m_ui->ssKubun->fitColumns();
    m_ui->ssTanka->fitColumns();
    m_ui->imD_Tsuki->setFocus();
    m_ui->imD_Tsuki->selectAll();
    return 0;
}

bool FeesForm::readEdited() {
    const Result<Bands> bands = readBands(m_db, m_environment.branch);
    if (!bands) {
        m_error = bands.reason();
        return false;
    }
    m_seen = *bands;
    m_bands->load(m_seen);
    return true;
}

void FeesForm::readMonth() {
    const QDate date = m_ui->imD_Tsuki->date();
    const QString month = date.toString(u"yyyyMM");
    // What is shown stays while the box holds no month: it says itself of when it is.
    m_ui->lblGengou->setText(formatDate(date, u"ggge年m月の料金"));
    m_bands->setMonth(month);
    const bool known = date.isValid() && m_fees.iGetOuryohiAll(month) == 0;
    if (!known)
        m_fees = cls往療費(m_environment);
    showPrices(known ? month : QString());
    showState();
}

// Prices of another month must not stay: they are read into a new object.
void FeesForm::showPrices(const QString &month) {
    cls単価 prices(m_environment);
    if (!month.isEmpty())
        prices.iGetTanka(month);
    int row = 0;
    for (const cls単価::Price &price : cls単価::prices()) {
        const qint32 yen = prices.*price.price;
        auto *number = new QStandardItem(yen == 0 ? QString() : u"%L1"_s.arg(yen));
        number->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_prices->setItem(row, 0, new QStandardItem(price.caption.toString()));
        m_prices->setItem(row++, 1, number);
    }
}

void FeesForm::showFee() {
    const QString typed = m_ui->txtKyori->text();
    const std::optional<qint32> metres = numberFromInput(typed);
    QString text;
    if (!metres && !typed.isEmpty()) {
        text = u"0～2,147,483,647 の整数をメートルで入力してください"_s;
    } else if (metres && m_fees.i往療区分数() == 0) {
        text = u"この年月には往療費の区分がありません"_s;
    } else if (metres) {
        qint32 counted = *metres;
        text = u"往療料 %L1 円"_s.arg(m_fees.iGetOuryohi(counted, m_ui->chkSaigo->isChecked() ? 1 : 0));
        if (counted != *metres)
            text += u"（%L1 m として計算）"_s.arg(counted);
    }
    m_ui->lblOuryohi->setText(text);
}

void FeesForm::showState() {
    showFee();
    m_ui->cmdEdit->setEnabled(m_ui->ssKubun->currentIndex().isValid());
    m_ui->cmdDelete->setEnabled(m_ui->ssKubun->currentIndex().isValid());
    m_ui->cmdSave->setEnabled(changed());
    const BandTroubles troubles = troublesOf(m_bands->bands());
    QStringList notes = troubles.wrong + troubles.odd;
    if (changed())
        notes.prepend(u"保存していない変更は、上の往療料には含まれません。"_s);
    else if (m_fees.i往療区分数() != m_bands->inForce())
        notes.prepend(
            u"往療料は、ほかの拠点の区分も含めた %1 区分から探します。"_s.arg(m_fees.i往療区分数()));
    m_ui->lblTrouble->setText(notes.join(u'\n'));
    m_ui->lblTrouble->setVisible(!notes.isEmpty());
}

bool FeesForm::changed() const {
    return !sameBands(m_seen, m_bands->bands());
}

// Commands by key leave a cell's editor open.
bool FeesForm::settleCell() {
    m_refused = false;
    return m_ui->ssKubun->commitEditor() && !m_refused;
}

void FeesForm::add() {
    if (!settleCell())
        return;
    const int row = m_bands->add(m_ui->ssKubun->currentIndex().row());
    m_ui->ssKubun->goTo(row, row == 0 ? BandsModel::Start : BandsModel::To);
    m_ui->ssKubun->setFocus();
}

void FeesForm::remove() {
    const QModelIndex at = m_ui->ssKubun->currentIndex();
    if (!settleCell() || !at.isValid())
        return;
    m_bands->remove(at.row());
    m_ui->ssKubun->goTo(at.row(), at.column());
}

bool FeesForm::save() {
    Messages &messages = m_environment.messages;
    if (!settleCell())
        return false;
    const BandTroubles troubles = troublesOf(m_bands->bands());
    if (!troubles.wrong.isEmpty()) {
        messages.warn(u"この内容では保存できません。\r\n\r\n"_s + troubles.wrong.join(u"\r\n"_s));
        return false;
    }
    if (!troubles.odd.isEmpty() &&
        !messages.ask(u"往療費の区分に、すきまや重なりがあります。\r\n\r\n"_s + troubles.odd.join(u"\r\n"_s) +
                          u"\r\n\r\nこのまま保存しますか？"_s,
                      u"往療費区分の保存"_s, Answer::No))
        return false;
    const Result<bool> saved = saveBands(m_db, m_environment.branch, m_seen, m_bands->bands());
    if (!saved) {
        messages.fail(saved.reason(), u"DB-error"_s);
        return false;
    }
    if (!*saved) {
        messages.warn(u"往療費の区分が他の端末で変更されたため、保存できませんでした。"
                      "画面を開きなおして、もう一度入力してください。"_s);
        return false;
    }
    if (readEdited())
        readMonth();
    else
        messages.fail(m_error, u"DB-error"_s);
    return true;
}

void FeesForm::reject() {
    if (!settleCell())
        return;
    if (changed()) {
        const Answer answer = m_environment.messages.askToSave();
        if (answer == Answer::Cancel || (answer == Answer::Yes && !save()))
            return;
    }
    QDialog::reject();
}
