// What a start says of versions: the program's, the installation's and the one that the user worked with
// last.

#include "app/base/settings.h"
#include "app/base/version.h"
#include "tests/support/test_environment.h"
#include "widgets/version_text.h"
#include "widgets/window_settings.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString keptVersion(const Folders &folders) {
    return SettingsSection(folders, u"プログラム版.ini"_s, u"同意書管理"_s).text(u"最新版"_s);
}

void keepVersion(const Folders &folders, const QString &version) {
    SettingsSection section(folders, u"プログラム版.ini"_s, u"同意書管理"_s);
    ASSERT_TRUE(section.write({{u"最新版"_s, version}}));
}

TEST(Version, AnUpdateIsToldToEachUserOnce) {
    const TestInstallation installation;
    windowSettings().clear();
    EXPECT_EQ(versionNews(installation.folders), QString()) << "nobody new is told of an update";
    EXPECT_EQ(keptVersion(installation.folders), ownVersion());

    windowSettings().setValue(u"program/version"_s, u"0.1.0"_s);
    EXPECT_TRUE(versionNews(installation.folders).contains(ownVersion()));
    EXPECT_EQ(versionNews(installation.folders), QString());
    EXPECT_TRUE(changesText().contains(ownVersion())) << "CHANGES.ja.md says nothing of this version";
}

TEST(Version, AnOlderProgramSaysSoAndLeavesTheNewersMark) {
    const TestInstallation installation;
    const QString newer = u"0.10.0"_s; // which comes before 0.2.0 in a telephone book
    keepVersion(installation.folders, newer);
    const QString news = versionNews(installation.folders);
    EXPECT_TRUE(news.contains(newer) && news.contains(ownVersion())) << news.toStdString();
    EXPECT_EQ(versionNews(installation.folders), news) << "it stays true at the next start";
    EXPECT_EQ(keptVersion(installation.folders), newer);

    keepVersion(installation.folders, u"0.1.9"_s);
    EXPECT_EQ(versionNews(installation.folders), QString());
    EXPECT_EQ(keptVersion(installation.folders), ownVersion());
}

} // namespace
