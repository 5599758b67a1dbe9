#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "search/staff_search_form.h"

#include "app/base/folders.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A practice of one office with five patients, three staff and a few masters.
class Searches : public testing::Test, protected TestInstallation {
protected:
    Searches() {
        database.run(
            u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES (1, 1, '本店', 1), (1, "
            u"2, '支店', 1);"
            "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) VALUES"
            " (1, 1, 7, '佐藤', 'サトウ', NULL), (1, 1, 8, '鈴木', 'スズキ', 1), (1, 2, 7, '別人', "
            "'ベツジン', 0);"
            "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cTelNo, tExpireDay, "
            "iSejutsuKubun,"
            " nTantou) VALUES"
            " (1, 1, 1, '山田太郎', 'ヤマダタロウ', '03-1111', NULL, 0, 7),"
            " (1, 1, 2, 'O''Brien', 'オブライエン', '03-2222', NULL, 1, 7),"
            " (1, 1, 3, '50%引', 'ハンビキ', NULL, NULL, 0, NULL),"
            " (1, 1, 4, '高橋', NULL, NULL, '2026/03/31', 0, 7),"
            " (1, 2, 5, '支店の人', 'シテン', NULL, NULL, 0, 7);"
            "INSERT INTO DOCTOR (cIDNo, cName, cNameKana, cKikan) VALUES ('12', '医師''甲', 'イシコウ', '甲医院')"_s);
    }

    /// Runs `work` on the form while `search` shows it, and leaves it if the work has not.
    template <class Work> short during(SearchClass &search, Work work) {
        QTimer::singleShot(0, [&] {
            auto *form = qobject_cast<PickListForm *>(QApplication::activeModalWidget());
            if (!form) {
                ADD_FAILURE() << "no form is shown";
                return;
            }
            EXPECT_TRUE(QTest::qWaitForWindowActive(form));
            work(*form);
            form->close();
        });
        return search.iDspStart();
    }

    static QString codes(const QWidget &form, int column = 0) {
        const auto *model = form.findChild<Grid *>(u"ssList"_s)->model();
        QStringList shown;
        for (int row = 0; row < model->rowCount(); ++row)
            shown << model->index(row, column).data().toString();
        return shown.join(u' ');
    }
    static void enter(const QWidget &form, const QString &box, const QString &text) {
        auto *edit = form.findChild<QLineEdit *>(box);
        edit->setFocus();
        edit->selectAll();
        text.isEmpty() ? edit->clear() : typeText(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    static QString inPlaceOfRows(const PickListForm &form) {
        const auto *nothing = form.findChild<QLabel *>(u"lblEmpty"_s);
        return nothing->isVisible() ? nothing->text() : QString();
    }
    static QString condition(const QWidget &form) { return form.findChild<QLabel *>(u"lblJouken"_s)->text(); }
    QString lastMessage() const {
        return messages.shown.isEmpty() ? QString() : messages.shown.constLast().text;
    }

    TestDatabase database;
    cls患者検索 patients{database.db, environment};
    cls施術者検索 staff{database.db, environment};
};

} // namespace

TEST_F(Searches, PatientIsNarrowedAndTaken) {
    ASSERT_EQ(during(patients,
                     [&](PickListForm &form) {
                         EXPECT_EQ(form.objectName(), u"frm患者検索"_s);
                         EXPECT_EQ(codes(form), u"1 2 3"_s) << "whose treatment goes on";
                         EXPECT_EQ(condition(form), u"抽出条件："_s);
                         auto *box = form.findChild<QLineEdit *>(u"txtShibori"_s);
                         EXPECT_TRUE(box->hasFocus());
                         typeText(box, u"やまだ"_s);
                         QTest::keyClick(box, Qt::Key_Return);
                     }),
              0)
        << patients.CsErrStr().toStdString();
    EXPECT_EQ(patients.nSeledCD, 1);
    EXPECT_EQ(patients.csSeledName(), u"山田太郎"_s);
    EXPECT_EQ(patients.seledOffice(), (Branch{1, 1}));

    during(patients, [](PickListForm &form) { QTest::keyClick(&form, Qt::Key_Escape); });
    EXPECT_EQ(patients.nSeledCD, 0) << "the former choice is gone";
    EXPECT_EQ(patients.csSeledName(), QString());
}

TEST_F(Searches, ATypedPatientNumberTakesThatPatient) {
    database.run(u"UPDATE RIYOUSHA SET cTelNo = '03-3333' WHERE nIDNo = 2"_s);
    const auto type = [](QStringView number) {
        return [number](PickListForm &form) {
            auto *box = form.findChild<QLineEdit *>(u"txtShibori"_s);
            typeText(box, number.toString());
            QTest::keyClick(box, Qt::Key_Return);
        };
    };
    during(patients, type(u"3"));
    EXPECT_EQ(patients.nSeledCD, 3) << "not the one whose telephone has a 3";
    during(patients, type(u"4"));
    EXPECT_EQ(patients.nSeledCD, 0) << "whose treatment has ended";
    database.run(u"UPDATE RIYOUSHA SET cTelNo = '03-4444' WHERE nIDNo = 2"_s);
    during(patients, type(u"4"));
    EXPECT_EQ(patients.nSeledCD, 0) << "nobody is taken in the ended patient's place";
}

TEST_F(Searches, PatientConditionsReadAgain) {
    during(patients, [&](PickListForm &form) {
        enter(form, u"txtName"_s, u"O'B"_s);
        EXPECT_EQ(codes(form), u"2"_s);
        EXPECT_EQ(condition(form), u"抽出条件： 名称（全文一致）=O'B"_s);
        EXPECT_TRUE(form.findChild<Grid *>(u"ssList"_s)->hasFocus()) << "Enter goes on to the rows";
        enter(form, u"txtName"_s, u"%"_s);
        EXPECT_EQ(codes(form), u"1 2 3"_s) << "a wildcard as typed";
        enter(form, u"txtName"_s, {});
        enter(form, u"txtKana"_s, u"ﾔﾏﾀﾞ"_s);
        EXPECT_EQ(codes(form), u"1"_s);
        enter(form, u"txtKana"_s, {});

        enter(form, u"imNum_StaffNo"_s, u"７"_s);
        EXPECT_EQ(codes(form), u"1 2"_s);
        EXPECT_TRUE(form.findChild<QComboBox *>(u"cmbStaff"_s)->currentText().contains(u"佐藤"));
        form.findChild<QComboBox *>(u"cmbSejutuKbn"_s)->setCurrentIndex(2);
        EXPECT_EQ(codes(form), u"2"_s);
        EXPECT_EQ(condition(form), u"抽出条件： 担当施術者=7 施術区分=鍼灸"_s);
        form.findChild<QComboBox *>(u"cmbSejutuKbn"_s)->setCurrentIndex(0);
        enter(form, u"imD_EndMonth"_s, u"2026/4"_s);
        EXPECT_EQ(codes(form), u"1 2"_s);
        enter(form, u"imD_EndMonth"_s, u"R8.3"_s);
        EXPECT_EQ(codes(form), u"1 2 4"_s);
        enter(form, u"imD_EndMonth"_s, {});
        form.findChild<QCheckBox *>(u"chkEndKanja"_s)->click();
        EXPECT_EQ(codes(form), u"1 2 4"_s);
        EXPECT_EQ(condition(form), u"抽出条件： 施術終了患者表示  担当施術者=7"_s);
        EXPECT_TRUE(messages.shown.isEmpty());
    });
}

TEST_F(Searches, PatientMistakesAreSaid) {
    during(patients, [&](PickListForm &form) {
        enter(form, u"imNum_RiyoushaNo"_s, u"99"_s);
        EXPECT_EQ(inPlaceOfRows(form), u"該当する利用者データがありません。"_s);
        form.vWhenSeledOK();
        EXPECT_EQ(lastMessage(), u"有効な行が選択されていません！"_s);
        enter(form, u"imNum_RiyoushaNo"_s, {});
        EXPECT_EQ(codes(form), u"1 2 3"_s);
        enter(form, u"imNum_StaffNo"_s, u"99"_s);
        EXPECT_EQ(lastMessage(), u"施術者の検索に失敗しました"_s);
        EXPECT_TRUE(form.findChild<QLineEdit *>(u"imNum_StaffNo"_s)->hasFocus());
        EXPECT_EQ(codes(form), u"1 2 3"_s);

        const qsizetype said = messages.shown.size();
        QTest::keyClick(form.findChild<QLineEdit *>(u"imNum_StaffNo"_s), Qt::Key_Tab);
        QCoreApplication::processEvents();
        EXPECT_EQ(form.findChild<QLineEdit *>(u"imNum_StaffNo"_s)->text(), QString()) << "back to any";
        EXPECT_EQ(messages.shown.size(), said) << "nobody may be held in the box";
    });
}

TEST_F(Searches, AreaLetsAStaffMembersPatientsOfOtherOfficesPass) {
    patients.iArea = 1;
    during(patients, [&](PickListForm &form) {
        EXPECT_EQ(codes(form, 1), u"1 2 3"_s);
        enter(form, u"imNum_StaffNo"_s, u"7"_s);
        EXPECT_EQ(codes(form, 1), u"1 2 5"_s);
        auto *grid = form.findChild<Grid *>(u"ssList"_s);
        QTest::keyClick(grid, Qt::Key_End);
        QTest::keyClick(grid, Qt::Key_Return);
    });
    EXPECT_EQ(patients.nSeledCD, 5);
    EXPECT_EQ(patients.seledOffice(), (Branch{1, 2}));
}

TEST_F(Searches, PatientNamesByNumber) {
    QString name;
    QString kana;
    EXPECT_EQ(patients.iSetRiyouName(2, name), 0);
    EXPECT_EQ(name, u"O'Brien"_s);
    EXPECT_EQ(patients.iSetRiyouName2(4, name, kana), 0) << "an ended treatment does not hide the name";
    EXPECT_EQ(name + kana, u"高橋"_s);
    EXPECT_EQ(patients.csSetRiyouName_Text(u" 1 "_s), u"山田太郎"_s);
    for (const QString &wrong : {u"5"_s, u"0"_s, u""_s, u"'"_s, u"999999999999999999999"_s})
        EXPECT_EQ(patients.csSetRiyouName_Text(wrong), QString()) << wrong.toStdString();
    EXPECT_EQ(patients.iSetRiyouName(5, name), -1) << "of another office";
    EXPECT_EQ(name, QString());
    EXPECT_EQ(patients.CsErrStr(), u"該当する利用者データがありません。"_s);
}

TEST_F(Searches, StaffIsCheckedByNumber) {
    QString name;
    EXPECT_EQ(staff.iChkStaff(7, name), 0) << "a Null suspension flag is none";
    EXPECT_EQ(name, u"佐藤"_s);
    EXPECT_EQ(staff.iChkStaff(8, name), -1);
    EXPECT_EQ(staff.CsErrStr(), u"管理対象から外れています。"_s);
    EXPECT_EQ(staff.lookup(u"9"_s).reason, u"対象の施術者が存在しません。"_s);
}

TEST_F(Searches, StaffIsNarrowedAndTaken) {
    during(staff, [&](PickListForm &form) {
        EXPECT_EQ(form.objectName(), u"frm施術者検索"_s);
        EXPECT_EQ(codes(form), u"7"_s);
        EXPECT_FALSE(form.findChild<QComboBox *>(u"cmbKyoten"_s)->isEnabled());
        form.findChild<QCheckBox *>(u"chkChusi"_s)->click();
        EXPECT_EQ(codes(form), u"7 8"_s);
        enter(form, u"txtName"_s, u"'"_s);
        EXPECT_EQ(inPlaceOfRows(form), u"該当する施術者データがありません。"_s);
        enter(form, u"txtName"_s, {});
        enter(form, u"txtKana"_s, u"すずき"_s);
        EXPECT_EQ(codes(form), u"8"_s);
        QTest::keyClick(form.findChild<Grid *>(u"ssList"_s), Qt::Key_Return);
    });
    EXPECT_EQ(staff.nSeledCD, 8);
    EXPECT_EQ(staff.csSeledName(), u"鈴木"_s);
}

TEST_F(Searches, StaffOfOtherOfficesAreOfferedOnRequestOnly) {
    staff.allOffices = true;
    during(staff, [&](PickListForm &form) {
        auto *offices = form.findChild<QComboBox *>(u"cmbKyoten"_s);
        EXPECT_EQ(offices->count(), 3);
        EXPECT_EQ(offices->currentText(), u"01-01  本店"_s);
        EXPECT_EQ(codes(form, 2), u"佐藤"_s);
        offices->setCurrentIndex(2);
        EXPECT_EQ(codes(form, 2), u"別人"_s);
        offices->setCurrentIndex(0);
        EXPECT_EQ(codes(form, 2), u"佐藤 別人"_s);
    });
    staff.consultation = 77;
    during(staff, [](PickListForm &form) {
        EXPECT_EQ(inPlaceOfRows(form), u"該当する施術者データがありません。"_s);
    });
}

TEST_F(Searches, MastersAnswerCodesAndLists) {
    MasterSearch doctors(Master::Doctor, database.db, environment);
    EXPECT_EQ(doctors.lookup(u"12"_s).row, (CodeName{u"12"_s, u"医師'甲"_s}));
    EXPECT_EQ(doctors.lookup(u"13"_s).reason, u"該当する医師データがありません。"_s);
    const CodeSearch search = codeSearch(doctors, messages);
    QTimer::singleShot(0, [] {
        QWidget *form = QApplication::activeModalWidget();
        EXPECT_EQ(form->objectName(), u"frm医師検索"_s);
        typeText(form->findChild<QLineEdit *>(u"txtShibori"_s), u"甲医院"_s);
        QTest::keyClick(form->findChild<QLineEdit *>(u"txtShibori"_s), Qt::Key_Return);
    });
    EXPECT_EQ(search.choose(nullptr), (CodeName{u"12"_s, u"医師'甲"_s}));

    for (const Master empty :
         {Master::Hospital, Master::LivingFacility, Master::Insurer, Master::Counsellor}) {
        MasterSearch one(empty, database.db, environment);
        const QString reason = one.lookup(u"1"_s).reason;
        EXPECT_EQ(reason.left(4), u"該当する"_s);
        during(one, [&](PickListForm &form) { EXPECT_EQ(inPlaceOfRows(form), reason); });
    }
}

TEST_F(Searches, WithoutAConnectionNoFormIsShown) {
    cT_ADODB unset;
    cls患者検索 nowhere(unset, environment);
    EXPECT_EQ(nowhere.iDspStart(), -1);
    EXPECT_FALSE(nowhere.CsErrStr().isEmpty());

    database.run(u"DROP TABLE STAFF"_s);
    EXPECT_EQ(patients.iDspStart(), -1);
    EXPECT_TRUE(patients.CsErrStr().endsWith(u"\r\niMastDataLoad() でエラー"_s))
        << patients.CsErrStr().toStdString();
    const QString former = patients.CsErrStr();
    EXPECT_EQ(patients.iDspStart(), -1);
    EXPECT_EQ(patients.CsErrStr(), former) << "only this failure, not all that the connection has gathered";
    QString name;
    EXPECT_EQ(staff.iChkStaff(7, name), -1);
    EXPECT_TRUE(staff.CsErrStr().endsWith(u"\r\niChkStaff でエラー"_s));
}
