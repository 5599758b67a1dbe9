// Ledgers, envelopes and letters by their screens: from the rows of a list, and from the masters.

#include "app/base/codepage932.h"
#include "consent/rows/list_columns.h"
#include "consent/screens/consent_list_form.h"
#include "print/consent_form/consent_print_form.h"
#include "print/ledger/ledger.h"
#include "print/management/management_master_form.h"
#include "tests/consent_form/practice.h"
#include "tests/widgets/form_keys.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class Management : public testing::Test {
protected:
    Management() {
        practice.keepPrintFiles();
        QStringList layouts{u"封筒印刷.wfd"_s, u"封筒印刷角2.wfd"_s};
        for (int i = 0; i < ledgerPatterns; ++i)
            layouts += ledgerLayout(LedgerPattern(i));
        for (const QString &layout : layouts)
            practice.addFile(practice.system(layout));
        practice.processes.act = [this](const RecordedProcesses::Start &start) {
            practice.addFile(start.arguments.at(0));
            return ProcessEnd{ProcessEnd::Exited, 0};
        };
    }
    static ManagementRow row(qint32 number, qint32 date, short deformity = 0) {
        return {{{1, 1, number}, date, deformity, deformity * date}, QString::number(number)};
    }
    const PutOutLetters letters = [this](const std::vector<ManagementRow> &rows, PrintWay way, QWidget *) {
        asked += way == PrintWay::Print ? u"print"_s : u"preview"_s;
        for (const ManagementRow &one : rows)
            asked += u"%1/%2"_s.arg(one.key.patient.nIDNo).arg(one.key.nDate);
        return u"出力しました"_s;
    };
    void openRows() {
        auto list = std::make_unique<frm同意書管理印刷>(practice.environment, practice.database.db);
        ASSERT_EQ(list->iInit({ticked, shown, 2, u"医師：山田"_s}, letters), 0);
        form = std::move(list);
        showActive(*form);
    }
    void openMasters() {
        auto masters = std::make_unique<frm同意書管理印刷_mst>(practice.environment, practice.database.db);
        masters->iInit(letters);
        form = std::move(masters);
        showActive(*form);
    }
    void choose(const QString &button) { form->findChild<QRadioButton *>(button)->click(); }
    void choosePattern(int pattern) {
        auto *box = form->findChild<QComboBox *>(u"cmbPattern"_s);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < pattern; ++i)
            QTest::keyClick(box, Qt::Key_Down);
    }
    void enter(const QString &box, const QString &text) {
        auto *edit = form->findChild<QLineEdit *>(box);
        edit->setFocus();
        edit->selectAll();
        typeText(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
        QApplication::processEvents();
    }
    void pick(const QStringList &codes) {
        for (const QString &code : codes)
            enter(u"txtPickNo"_s, code);
    }
    void print(Qt::Key key = Qt::Key_F11, const std::deque<Answer> &answers = {}) {
        practice.messages.answers = answers;
        pressButton(*form, key);
    }
    QStringList envelopes() const {
        return practice.cells(u"同意依頼書.csv"_s,
                              {u"郵便番号1"_s, u"郵便番号2"_s, u"宛名施設"_s, u"宛名"_s, u"宛先住所１"_s});
    }
    QStringList ledger() const {
        return practice.cells(u"同意データ.csv"_s, {u"患者ID"_s, u"同意種別"_s, u"同意日"_s, u"検索名称"_s});
    }
    QString layout() const {
        const QString line = practice.written(u"WfdCom.dat"_s).section(u"\r\n"_s, 0, 0);
        return QFileInfo(line.section(u'"', 1, 1)).fileName();
    }
    QString state() const { return form->findChild<QLabel *>(u"lblState"_s)->text(); }

    Practice practice;
    const std::vector<ManagementRow> shown{row(2, 20261020), row(1, 20260501), row(1, 20261101, 1),
                                           row(3, 20260601), row(5, 20260701)};
    std::vector<ManagementRow> ticked;
    QStringList asked; ///< which letters were wanted
    std::unique_ptr<ManagementPrintForm> form;
};

TEST_F(Management, OneEnvelopeServesAllRowsOfAnAddressee) {
    practice.database.run(u"INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName, nSisetsuCode) VALUES (1, "
                          u"1, 9, '相談　員', 70), (1, 2, 9, '他の拠点', 70);"
                          "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cAdress1) VALUES"
                          " (1, 2, 2, '他の拠点', '荘町9');"
                          "UPDATE SISETSU SET cYubinNo = '９９２－１０１１' WHERE nIDNo = 70;"
                          "UPDATE RIYOUSHA_SUB SET iSoudaninId = 9 WHERE nIDNo IN (1, 3);"
                          "UPDATE RIYOUSHA SET cName = '吉田　二' WHERE nIDNo = 5"_s);
    struct Case {
        QString destination;
        QStringList envelopes, nobody;
    };
    const QString hospital = u"992|1011|緑病院|"_s;
    const Case cases[] = {
        {u"optDestination_0"_s,
         {u"||記録の医院|書類ご担当者様|記録の住所"_s, hospital + u"書類ご担当者様|病院町1"_s},
         {}},
        {u"optDestination_1"_s,
         {u"||記録の医院|記録の医師　様|記録の住所"_s, hospital + u"山田'一　様|病院町1"_s,
          hospital + u"筆　太　様|病院町1"_s},
         {}},
        {u"optDestination_2"_s,
         {u"||ひだまり荘|書類ご担当者様|荘町8"_s},
         {u"2 佐藤　一"_s, u"3 口頭　太郎"_s, u"5 吉田　二"_s}},
        {u"optDestination_3"_s,
         {u"|||佐藤　一　様|青葉3"_s, u"|||髙橋　花子　様|若葉1"_s, u"|||口頭　太郎　様|x"_s,
          u"|||吉田　二　様|x"_s},
         {}},
        {u"optDestination_4"_s, {hospital + u"相談　員　様|病院町1"_s}, {u"2 佐藤　一"_s, u"5 吉田　二"_s}},
    };
    openRows();
    choose(u"OptPrintMode_2"_s);
    for (const Case &one : cases) {
        choose(one.destination);
        print();
        EXPECT_EQ(envelopes(), one.envelopes) << one.destination.toStdString();
        const QStringList texts = practice.said();
        ASSERT_EQ(texts.size(), 1);
        QString expected;
        if (!one.nobody.isEmpty())
            expected = u"あて先がないため、封筒を印刷しない対象：\r\n"_s + one.nobody.join(u"\r\n"_s) +
                       u"\r\n\r\n"_s;
        expected +=
            u"印刷用紙を封筒サイズに合わせて設定してください。\r\n\r\n"
            "対象 5 件：あて先をまとめた封筒 %1 枚を印刷します。よろしいですか？"_s.arg(one.envelopes.size());
        EXPECT_EQ(texts[0], expected);
        EXPECT_TRUE(state().contains(u"封筒 %1 枚"_s.arg(one.envelopes.size())));
    }
    EXPECT_EQ(layout(), u"封筒印刷.wfd"_s);
    const QString noRequest = u"SetItemValue,\"封筒.在中\",\"無\"\r\n"_s;
    EXPECT_TRUE(practice.written(u"WfdCom.dat"_s).endsWith(noRequest + u"PrintOutFromDialog\r\n"_s));
    choose(u"optDestination_1"_s);
    choosePattern(1);
    print(Qt::Key_F9);
    EXPECT_FALSE(practice.written(u"WfdCom.dat"_s).contains(noRequest)) << "doctors get the request";
    EXPECT_EQ(layout(), u"封筒印刷角2.wfd"_s);
    EXPECT_EQ(practice.said(), QStringList()) << "a preview needs no paper";

    // The next time it opens as it was left.
    openRows();
    EXPECT_TRUE(form->findChild<QRadioButton *>(u"OptPrintMode_2"_s)->isChecked());
    EXPECT_TRUE(form->findChild<QRadioButton *>(u"optDestination_1"_s)->isChecked());
    EXPECT_EQ(form->findChild<QComboBox *>(u"cmbPattern"_s)->currentIndex(), 1);
}

TEST(ManagementEnvelopes, AreSharedByTheSameAddresseeAlone) {
    const Addressee one{u"医師"_s, u"病院"_s, u"9921011"_s, u"町1"_s, u"2階"_s, u"0999"_s};
    EnvelopeWishes wishes;
    wishes.wishes = {{u"1"_s, one}, {u"2"_s, one}};
    for (QString Addressee::*part : {&Addressee::doctor, &Addressee::institution, &Addressee::zip,
                                     &Addressee::address1, &Addressee::address2}) {
        Addressee other = one;
        other.*part += u'3';
        wishes.wishes.push_back({u"3"_s, other});
    }
    const auto count = [&](EnvelopeDestination to) {
        return envelopeDocument(wishes, to, EnvelopeSize::Long3).data.count();
    };
    EXPECT_EQ(count(EnvelopeDestination::Doctor), 6);
    EXPECT_EQ(count(EnvelopeDestination::Institution), 5) << "whoever the doctor is";
}

TEST_F(Management, AThousandPatientsOfAnInstitutionShareAnEnvelope) {
    std::vector<ManagementRow> rows;
    for (int number = 1000; number < 2100; ++number) {
        rows.push_back(row(number, 20260601));
        practice.database.run(
            u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, %1, '多')"_s.arg(
                number) +
            u";INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, "
            u"nHenkeiDouiDate,"
            " iNewestFlg, cIsiCd) VALUES (1, 1, %1, 20260601, 0, 0, 1, '12')"_s.arg(number));
    }
    for (const EnvelopeDestination to : {EnvelopeDestination::Institution, EnvelopeDestination::Patient}) {
        const Result<EnvelopeWishes> wishes =
            readWishes(practice.environment, practice.database.db, to, rows);
        ASSERT_TRUE(wishes) << wishes.reason().toStdString();
        EXPECT_EQ(wishes->wishes.size(), rows.size());
        const ManagementDocument document = envelopeDocument(*wishes, to, EnvelopeSize::Long3);
        EXPECT_EQ(document.data.count(), to == EnvelopeDestination::Institution ? 1 : 0);
    }
}

TEST_F(Management, LedgersTakeTheTickedRowsElseAllThatAreShown) {
    openRows();
    EXPECT_FALSE(form->findChild<QRadioButton *>(u"optSelKanja_0"_s)->isEnabled());
    EXPECT_EQ(state(), u"対象 5 件"_s);
    ticked = {shown[3], row(1, 20250507)};
    openRows();
    EXPECT_EQ(state(), u"対象 2 件　絞り込みで表示していない対象 2 件は含みません。"_s);
    choosePattern(3);
    print();
    EXPECT_EQ(ledger(), QStringList{u"3|マッサージ|2026/06/01|医師：山田"_s});
    EXPECT_EQ(layout(), u"同意管理同意台帳04.wfd"_s);
    EXPECT_TRUE(practice.said().value(0).startsWith(
        u"次の行は最新の同意でないか、削除されているため、台帳に出力できません。\r\n1\r\n"_s));
    choose(u"optSelKanja_1"_s);
    practice.database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoS = NULL WHERE iHenkeiFlg = 1"_s);
    choosePattern(0);
    print();
    EXPECT_EQ(ledger().size(), 4);
    const QStringList texts = practice.said();
    ASSERT_EQ(texts.size(), 1) << "all that there is to say in one box";
    EXPECT_TRUE(texts[0].startsWith(
        u"下記の利用者は変形徒手の期間が入力されていないため抽出できません。\r\n1 髙橋　花子\r\n\r\n"_s));
    EXPECT_TRUE(texts[0].contains(u"5　𠮷田＂二＂ 三：「𠮷」→「吉」"_s)) << texts[0].toStdString();

    enter(u"imD_KikanFrom"_s, u"20261201"_s);
    enter(u"imD_KikanTo"_s, u"R8.11.30"_s);
    print();
    EXPECT_EQ(practice.said(), QStringList{u"施術期間を正しく設定してください。"_s});
    enter(u"imD_KikanTo"_s, u"R8.12.31"_s);
    print(Qt::Key_F9);
    EXPECT_EQ(practice.cells(u"同意データ.csv"_s, {u"患者ID"_s}), (QStringList{u"2"_s, u"5"_s}));
    EXPECT_FALSE(practice.said().value(0).contains(u"施術者データがありません。"_s));
    choosePattern(3);
    print(Qt::Key_F9);
    EXPECT_TRUE(practice.said().value(0).contains(
        u"施術者データがありません。次の利用者は、担当者を空欄のまま出力します。\r\n2 佐藤　一\r\n\r\n"_s));
}

TEST_F(Management, AnAddressAloneIsNobody) {
    practice.database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET cDouiIsiName = Null, cDouiIsiKikan = '' WHERE nIDNo = 2"_s);
    openRows();
    choose(u"OptPrintMode_2"_s);
    for (const QString &destination : {u"optDestination_0"_s, u"optDestination_1"_s}) {
        choose(destination);
        print();
        EXPECT_FALSE(envelopes().join(u'\n').contains(u"記録の住所"_s)) << destination.toStdString();
        EXPECT_TRUE(practice.said().value(0).startsWith(
            u"あて先がないため、封筒を印刷しない対象：\r\n2 佐藤　一\r\n\r\n"_s));
    }
}

TEST_F(Management, SaysWhyNothingIsPrinted) {
    practice.addFile(practice.data(u"印刷設定.ini"_s),
                     encode932(u"[同意書管理印刷]\r\n印刷帳票=9\r\n台帳様式=99\r\n宛先=-1\r\n"_s).bytes);
    openRows();
    choose(u"OptPrintMode_2"_s);
    ASSERT_TRUE(QFile::remove(practice.system(u"封筒印刷.wfd"_s)));
    print();
    EXPECT_EQ(practice.said(),
              QStringList{u"同意書（封筒印刷.wfd）が存在しません。\r\n処理を中止します。"_s});
    choosePattern(1);
    choose(u"optDestination_4"_s);
    print();
    EXPECT_TRUE(practice.said().value(0).startsWith(
        u"該当する同意依頼書データがありません。\r\n\r\nあて先がないため"_s));
    choose(u"optDestination_0"_s);
    print(Qt::Key_F11, {Answer::No});
    EXPECT_TRUE(practice.processes.started.isEmpty());
    practice.said();
    practice.processes.missing = QStringList{u"wfrfv10.exe"_s};
    print();
    EXPECT_TRUE(practice.said().value(1).startsWith(u"帳票の印刷に失敗しました。["_s));
    choose(u"OptPrintMode_1"_s);
    practice.database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0"_s);
    print();
    EXPECT_TRUE(practice.said().value(0).startsWith(u"出力するデータがありません。"_s));
    openMasters();
    print();
    EXPECT_EQ(practice.said(), QStringList{u"印刷する利用者を指定してください。"_s});
    frm同意書管理印刷 empty(practice.environment, practice.database.db);
    EXPECT_EQ(empty.iInit({}, letters), -1);
    EXPECT_EQ(empty.sErrMsg(), u"出力するデータがありません。"_s);
}

TEST_F(Management, MastersNeedNoConsent) {
    openMasters();
    choose(u"OptPrintMode_1"_s);
    pick({u"4"_s, u"1"_s, u"4"_s, u"77"_s});
    EXPECT_EQ(practice.said(), QStringList{u"該当する利用者データがありません。"_s});
    form->findChild<QLineEdit *>(u"txtPickNo"_s)->clear();
    EXPECT_EQ(state(), u"対象 2 件"_s);
    print(Qt::Key_F9);
    EXPECT_EQ(ledger(), (QStringList{u"4|マッサージ|同意日無|"_s, u"1|マッサージ|2026/05/01|"_s,
                                     u"1|変形徒手|2026/11/01|"_s}));
    practice.database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoE = NULL WHERE iHenkeiFlg = 1"_s);
    print(Qt::Key_F9);
    EXPECT_TRUE(practice.said().value(0).startsWith(
        u"変形徒手の期間が入力されていません。変形徒手期間を入力してください。\r\n1 髙橋　花子\r\n"_s));

    choose(u"OptPrintMode_3"_s);
    print();
    EXPECT_EQ(asked, (QStringList{u"print"_s, u"1/20260501"_s, u"1/20261101"_s}));
    EXPECT_EQ(state(), u"出力しました"_s);
    EXPECT_TRUE(practice.said().value(0).contains(u"依頼書を出力できない利用者：\r\n4 名前　だけ"_s));

    choose(u"OptPrintMode_2"_s);
    choose(u"optDestination_1"_s);
    EXPECT_EQ(state(), u"対象 0 件"_s) << "doctors are picked for themselves";
    practice.said();
    print();
    EXPECT_EQ(practice.said(), QStringList{u"印刷する医師を指定してください。"_s});
    EXPECT_EQ(form->focusWidget()->objectName(), u"txtPickNo"_s);
    pick({u"12"_s, u"13"_s});
    print();
    EXPECT_EQ(envelopes(), QStringList{u"||緑病院|書類ご担当者様|病院町1"_s});
    choose(u"optDestination_0"_s);
    pick({u"70"_s});
    print();
    EXPECT_EQ(envelopes(), QStringList{u"||緑病院|書類ご担当者様|病院町1"_s});
    choose(u"optDestination_3"_s);
    EXPECT_EQ(state(), u"対象 2 件"_s) << "the patients picked before";
    QTest::keyClick(form->findChild<QListWidget *>(u"lstPicked"_s), Qt::Key_Delete);
    print();
    EXPECT_TRUE(practice.said().back().startsWith(u"該当する同意依頼書データがありません。"_s))
        << "no address";
    practice.database.run(u"UPDATE RIYOUSHA SET cName = '', cAdress1 = 'x' WHERE nIDNo = 4"_s);
    print();
    EXPECT_TRUE(practice.said().back().startsWith(u"該当する同意依頼書データがありません。"_s)) << "no name";
}

TEST_F(Management, TheRenewalListTakesThePatientsOver) {
    openRows();
    choose(u"OptPrintMode_4"_s);
    QString opened, patients;
    QTimer::singleShot(0, form.get(), [&] {
        QWidget *screen = QApplication::activeModalWidget();
        opened = screen->objectName();
        patients = screen->findChild<QLabel *>(u"lblTaisyo"_s)->text();
        screen->close();
    });
    form->findChild<QPushButton *>(u"cmdPrint"_s)->click();
    EXPECT_EQ(opened, u"frm同意書更新リスト印刷"_s);
    EXPECT_EQ(patients, u"対象の利用者 4 人"_s);
}

TEST_F(Management, ConsentFormsOfPickedPatients) {
    practice.addFile(practice.data(u"印刷設定.ini"_s), "\r\n");
    practice.addFile(practice.data(u"患者管理設定.ini"_s), "\r\n");
    frm同意書印刷_mst screen(practice.environment);
    ASSERT_EQ(screen.iInit(practice.database.db, {}, {}, {}, 0), 0);
    showActive(screen);
    pressButton(screen, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList{u"利用者を指定してください。"_s});
    auto *code = screen.findChild<QLineEdit *>(u"txtPickNo"_s);
    for (const char c : {'4', '2', '1'}) {
        QTest::keyClick(code, c);
        if (c != '1')
            QTest::keyClick(code, Qt::Key_Return);
        QApplication::processEvents();
    }
    pressButton(screen, Qt::Key_F9);
    QStringList layouts;
    for (const QString &line : practice.written(u"Com.dat"_s).split(u"\r\n"_s))
        if (line.startsWith(u"SetReport"))
            layouts += QFileInfo(line.section(u'"', 1, 1)).fileName();
    EXPECT_EQ(layouts, (QStringList{u"M初回.wfd"_s, u"H再_B5.wfd"_s, u"M再.wfd"_s}))
        << "in the order picked, the one still being typed included";
}

TEST_F(Management, TheListHandsOverItsRowsAndFiltersAndIsMarked) {
    practice.addFile(practice.system(u"同意依頼書_CARE02_マ継続.wfd"_s));
    practice.database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0 WHERE nIDNo <> 5;"
        "UPDATE RIYOUSHA_DOUI_REC SET iDouiHospOutFlg = 1 WHERE nIDNo = 5;"
        "INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 9, '相談　員');"
        "UPDATE RIYOUSHA_SUB SET iSoudaninId = 9, iAddressSisetsuCd = 80 WHERE nIDNo = 5"_s);
    frm同意書管理 list(practice.environment);
    ASSERT_EQ(list.iInit(practice.database.db, 0), 0) << list.sErrMsg().toStdString();
    showActive(list);
    for (const auto &[box, code] : {std::pair(u"txtcDoctorNo"_s, u"13"_s),
                                    {u"txtcSisetsuNo"_s, u"70"_s},
                                    {u"txtcSisetsuNo2"_s, u"80"_s},
                                    {u"txtcSejutsuNo"_s, u"6"_s},
                                    {u"txtcSoudanshaNo"_s, u"9"_s}}) {
        auto *edit = list.findChild<QLineEdit *>(box);
        edit->setFocus();
        typeText(edit, code);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    QTest::keyClick(&list, Qt::Key_F4);
    practice.said();
    const auto requested = [&] {
        return practice.database.value(u"SELECT iOutputFlg FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 5"_s);
    };
    QTimer::singleShot(0, &list, [&] {
        QWidget *screen = QApplication::activeModalWidget();
        const auto click = [&](const QString &button) {
            screen->findChild<QAbstractButton *>(button)->click();
        };
        click(u"OptPrintMode_1"_s);
        click(u"cmdPreview"_s);
        EXPECT_EQ(ledger(),
                  QStringList{u"5|マッサージ|2026/07/01|医師：筆　太　　施設：緑病院　　施設：ひだまり荘　　"
                              "施術者：施術　花　　相談者：相談　員"_s});
        click(u"OptPrintMode_3"_s);
        click(u"cmdPreview"_s);
        EXPECT_EQ(requested(), u"NULL"_s);
        practice.messages.answers = {Answer::Yes, Answer::Yes};
        click(u"cmdPrint"_s);
        EXPECT_FALSE(practice.said().join(u'|').contains(u"依頼済み"_s));
        practice.messages.answers = {Answer::Yes, Answer::No};
        click(u"cmdPrint"_s);
        EXPECT_TRUE(practice.said().join(u'|').contains(u"うち依頼済み 1 件"_s)) << "by the letter before";
        screen->close();
    });
    list.findChild<QPushButton *>(u"CmdDouishoList"_s)->click();
    EXPECT_EQ(layout(), u"同意依頼書_CARE02_マ継続.wfd"_s) << practice.said().join(u'|').toStdString();
    EXPECT_EQ(requested(), u"1"_s);
    EXPECT_EQ(practice.database.value(u"SELECT iDouiIsiOutFlg FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 5"_s),
              u"NULL"_s)
        << "the letter before went to the institution, and so does this one";
    const QAbstractItemModel *rows = list.findChild<QTableView *>(u"ssDouiD"_s)->model();
    EXPECT_EQ(rows->index(0, int(ListColumn::Requested)).data(Qt::CheckStateRole), Qt::Checked);
}

TEST_F(Management, TheMastersAreReachedFromAListWithoutRows) {
    practice.database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    frm同意書管理 list(practice.environment);
    ASSERT_EQ(list.iInit(practice.database.db, 0), 0) << list.sErrMsg().toStdString();
    showActive(list);
    QStringList opened;
    for (const QString &entry : {u"mnDouishoMst"_s, u"mnDouishoListMst"_s}) {
        QTimer::singleShot(0, &list, [&] {
            QWidget *screen = QApplication::activeModalWidget();
            opened += screen->objectName();
            screen->close();
        });
        list.findChild<QAction *>(entry)->trigger();
    }
    EXPECT_EQ(opened, (QStringList{u"frm同意書印刷_mst"_s, u"frm同意書管理印刷_mst"_s}));
    practice.said();
    list.findChild<QPushButton *>(u"CmdDouishoList"_s)->click();
    EXPECT_EQ(practice.said(), QStringList{u"出力するデータがありません。"_s});
}

} // namespace
