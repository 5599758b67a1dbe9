#include "print/consent_form/print_settings.h"

#include "app/base/codepage932.h"
#include "tests/consent_form/practice.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct PrintSettings : testing::Test {
    void file(const QString &name, const QString &text) const {
        practice.addFile(QDir(practice.folders.data()).filePath(name), encode932(text).bytes);
    }
    Practice practice;
};

TEST_F(PrintSettings, AreReadAndWrittenBack) {
    ConsentPrintSettings settings;
    const QString reason = settings.read(practice.folders).reason();
    EXPECT_TRUE(reason.contains(u"印刷設定.ini"_s)) << reason.toStdString();

    file(u"印刷設定.ini"_s, u"[同意書]\r\n施術区分=1\r\nソート順=99\r\n出力様式=2\r\n施術内容出力=0\r\n"
                            "医師個別設定=1\r\n利用者ID=12\r\n提出日付=1\r\n[他]\r\nx=1\r\n"_s);
    ASSERT_TRUE(settings.read(practice.folders));
    EXPECT_EQ(settings.kind, TreatmentKind::Acupuncture);
    EXPECT_EQ(settings.order, FormOrder::Number) << "99 is no order that is stored";
    EXPECT_EQ(settings.style, FormStyle::Again);
    EXPECT_FALSE(settings.treatmentContent);
    EXPECT_TRUE(settings.doctorBlock);
    EXPECT_FALSE(settings.doctorSettings) << "is written only";
    EXPECT_EQ(settings.patient, 12);

    settings.order = FormOrder::Staff;
    settings.oral = OralForms::Saitama;
    settings.doctorSettings = true;
    EXPECT_TRUE(settings.submissionDate);
    EXPECT_EQ(settings.submissionFor(QDate(2026, 11, 21)), QDate(2026, 11, 21)) << "none was kept";
    settings.submitted = QDate(2026, 12, 1);
    ASSERT_TRUE(settings.write(practice.folders));
    ConsentPrintSettings again;
    ASSERT_TRUE(again.read(practice.folders));
    QFile others(QDir(practice.folders.data()).filePath(u"印刷設定.ini"_s));
    ASSERT_TRUE(others.open(QIODevice::ReadOnly));
    EXPECT_TRUE(decode932(others.readAll()).contains(u"提出日付=1\r\n")) << "read as a flag elsewhere";
    EXPECT_EQ(again.order, FormOrder::Staff);
    EXPECT_EQ(again.oral, OralForms::OwnLayout) << "the fixed layouts are a setting of the suite";
    EXPECT_FALSE(again.treatmentContent);
    EXPECT_TRUE(again.submissionDate);
    EXPECT_EQ(again.submissionFor(QDate(2026, 11, 21)), QDate(2026, 12, 1));
    EXPECT_EQ(again.submissionFor(QDate(2026, 12, 2)), QDate(2026, 12, 2)) << "the stored day has passed";
    again.submissionDate = false;
    ASSERT_TRUE(again.write(practice.folders));
    ASSERT_TRUE(settings.read(practice.folders));
    EXPECT_FALSE(settings.submissionDate);
    EXPECT_EQ(settings.submitted, QDate(2026, 12, 1)) << "offered when it is switched on again";
}

TEST_F(PrintSettings, TheOralVariantStandsInEitherSection) {
    PatientManagementSettings settings;
    EXPECT_FALSE(settings.read(practice.folders));
    for (const QString &section : {u"ENTRY"_s, u"同意記録"_s}) {
        file(u"患者管理設定.ini"_s, u"[%1]\r\n埼玉口頭同意=1\r\n"_s.arg(section));
        ASSERT_TRUE(settings.read(practice.folders));
        EXPECT_TRUE(settings.oralSaitama) << section.toStdString();
    }
    ASSERT_TRUE(settings.writeOralSaitama(practice.folders, false));
    ASSERT_TRUE(settings.read(practice.folders));
    EXPECT_FALSE(settings.oralSaitama);
}

} // namespace
