// Random practices, rows and options through the documents, each held against a reckoning of its own: a row's
// letter and form name its patient and its doctor and lie behind its doctor's envelope, nobody is printed
// twice or lost, who is left out is named, and what is marked is what left. DOUISHO_WALK_SEED=n walks one
// practice again, DOUISHO_WALK_SECONDS=n walks for longer.

#include "print/batch/batch_print.h"
#include "print/consent_form/form_files.h"
#include "print/engine/wfd_print_exe.h"
#include "print/set_print/set_print_job.h"
#include "tests/consent_form/random_practice.h"

#include "app/base/codepage932.h"
#include "app/base/dates.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A record on the paper.
struct Paper {
    QString layout;
    QHash<QString, QString> data;
    bool left = true;
    QString at(const QString &column) const { return data.value(column); }
};

class Walk : public RandomPractice {
public:
    explicit Walk(unsigned seed) : RandomPractice(seed) {
        for (const QString &layout : {u"M継続.wfd"_s, u"M新規.wfd"_s, u"封筒印刷.wfd"_s,
                                      u"埼玉口頭同意M.wfd"_s, u"埼玉口頭同意H.wfd"_s})
            m_practice.addFile(m_practice.system(layout));
        m_practice.processes.act = [this](const RecordedProcesses::Start &start) { return build(start); };
    }

    void sets();
    void letters();
    void forms();

private:
    std::vector<size_t> ticked();

    ProcessEnd build(const RecordedProcesses::Start &start);
    std::vector<Paper> read(const QString &commands) const;
    void expectForm(const Paper &paper, const Row &row, bool again);
    void expectLetter(const Paper &paper, const std::vector<size_t> &rows);
    std::vector<size_t> rowsOfLetter(const Paper &paper) const;
    static bool isLetter(const Paper &paper) {
        return paper.layout == u"M継続.wfd" || paper.layout == u"M新規.wfd";
    }
    static bool isEnvelope(const Paper &paper) { return paper.layout == u"封筒印刷.wfd"; }
    std::vector<LetterOrder> orders(const std::vector<size_t> &rows) const;

    std::vector<Paper> m_papers; ///< of the batch that runs
    bool m_builderFails = false;
};

/// What is ticked: most rows, some of them followed by others, one that is gone.
std::vector<size_t> Walk::ticked() {
    std::vector<size_t> rows;
    const int share = 1 + upTo(3);
    for (size_t row = 0; row < m_rows.size(); ++row)
        if (upTo(share) > 0 && (m_rows[row].newest || oneIn(5)))
            rows.push_back(row);
    std::ranges::shuffle(rows, m_random);
    return rows;
}

std::vector<LetterOrder> Walk::orders(const std::vector<size_t> &rows) const {
    std::vector<LetterOrder> orders;
    for (const size_t row : rows)
        orders.push_back({.row = m_rows[row].key(),
                          .layout = m_rows[row].continues ? u"M継続.wfd"_s : u"M新規.wfd"_s,
                          .who = u"%1 %2"_s.arg(m_rows[row].patient).arg(name(m_rows[row].patient)),
                          .continues = m_rows[row].continues});
    return orders;
}

/// What stands in the files that a command file names at this moment, as its program would print it.
std::vector<Paper> Walk::read(const QString &commands) const {
    const auto lines = [](const QString &path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return decode932(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
    };
    std::vector<Paper> papers;
    QString data, layout;
    const auto add = [&] {
        const QStringList records = lines(data);
        const QStringList columns = records.value(0).split(u',');
        for (const QString &record : records.mid(1)) {
            Paper paper{QFileInfo(layout).fileName(), {}};
            const QStringList cells = record.split(u',');
            EXPECT_EQ(cells.size(), columns.size()) << record.toStdString();
            for (qsizetype i = 0; i < cells.size(); ++i)
                paper.data.insert(QString(columns[i]).remove(u'"'), QString(cells[i]).remove(u'"'));
            papers.push_back(paper);
        }
    };
    for (const QString &line : lines(commands)) {
        if (line.startsWith(u"FileName,"))
            layout = line.section(u'"', 1, 1);
        if (line.startsWith(u"SetDataText,")) {
            data = line.section(u',', 2).section(u'"', 1, 1);
            if (!layout.isEmpty())
                add();
        }
        if (line.startsWith(u"SetReport,")) {
            layout = line.section(u'"', 1, 1);
            add();
            layout.clear();
        }
    }
    return papers;
}

/// The image builder: sometimes it fails, sometimes it names a report that it leaves out.
ProcessEnd Walk::build(const RecordedProcesses::Start &start) {
    std::vector<Paper> papers = read(start.arguments.at(2));
    const bool fails = m_builderFails && oneIn(3);
    if (!fails)
        m_practice.addFile(start.arguments.at(0));
    for (Paper &paper : papers)
        paper.left = !fails;
    std::ranges::move(papers, std::back_inserter(m_papers));
    return {ProcessEnd::Exited, fails ? 2 : 0};
}

void Walk::expectForm(const Paper &paper, const Row &row, bool again) {
    const bool shown = !doctorOf(row) || !doctorOf(row)->writes;
    EXPECT_EQ(paper.at(u"患者ID"_s), QString::number(row.patient));
    EXPECT_EQ(paper.at(u"患者名"_s), name(row.patient));
    EXPECT_EQ(paper.at(u"保険医氏名"_s), shown ? doctorName(row) : QString())
        << row.diagnosis().toStdString();
    EXPECT_EQ(paper.at(u"保険医療機関名"_s), shown ? institution(row) : QString())
        << row.diagnosis().toStdString();
    EXPECT_EQ(paper.at(u"保険医師所在地"_s), shown ? address(row) : QString())
        << row.diagnosis().toStdString();
    EXPECT_EQ(paper.at(u"再同意フラグ"_s), again ? u"1"_s : u"0"_s) << row.diagnosis().toStdString();
    EXPECT_EQ(paper.at(u"要加療期間・終了日"_s),
              formatDate(dateFromKey(row.date).addMonths(6), u"ggge年m月d日"));
    EXPECT_EQ(paper.layout.contains(u'H'), m_patients[size_t(row.patient) - 1].acupuncture)
        << paper.layout.toStdString();
}

/// The rows that a letter is for: those of its patients with its addressee, of the kind that it says.
std::vector<size_t> Walk::rowsOfLetter(const Paper &paper) const {
    std::vector<size_t> rows;
    const auto add = [&](auto &&fits) {
        for (size_t row = 0; row < m_rows.size(); ++row)
            if (isLast(m_rows[row]) && fits(m_rows[row]))
                rows.push_back(row);
    };
    if (paper.at(u"医師まとめ"_s) == u"0") {
        add([&](const Row &row) { return paper.at(u"傷病名"_s) == row.diagnosis(); });
        return rows;
    }
    for (int line = 1; line <= 10; ++line)
        if (const QString text = paper.at(u"まとめ%1"_s.arg(line)); !text.isEmpty())
            add([&](const Row &row) {
                return text.startsWith(name(row.patient) + u' ') && text.contains(u"変形") == row.correction;
            });
    return rows;
}

void Walk::expectLetter(const Paper &paper, const std::vector<size_t> &rows) {
    ASSERT_FALSE(rows.empty()) << paper.at(u"傷病名"_s).toStdString();
    for (const size_t at : rows) {
        const Row &row = m_rows[at];
        const QString institutionText = institution(row), doctorText = doctorName(row);
        const QString honoured = doctorText.isEmpty() && !institutionText.isEmpty()
                                     ? institutionText + u"　御中"_s
                                     : institutionText;
        EXPECT_EQ(paper.at(u"医者名"_s), doctorText.isEmpty() ? QString() : doctorText + u"　先生御侍史"_s);
        EXPECT_EQ(paper.at(u"病院名"_s), honoured) << row.diagnosis().toStdString();
        EXPECT_EQ(paper.at(u"病院住所"_s), address(row)) << row.diagnosis().toStdString();
        EXPECT_EQ(paper.layout, row.continues ? u"M継続.wfd"_s : u"M新規.wfd"_s);
    }
    EXPECT_TRUE(std::ranges::any_of(
        rows, [&](size_t row) { return paper.at(u"患者氏名"_s) == name(m_rows[row].patient); }));
}

void Walk::sets() {
    const std::vector<size_t> asked = ticked();
    SetPrintChoice choice;
    choice.consentForms = !oneIn(4);
    choice.requestLetters = oneIn(2) || !choice.consentForms;
    choice.envelopes = oneIn(2);
    choice.letter.day = QDate(2026, 11, 21);
    choice.letter.grouped = oneIn(2);
    choice.letter.printPractitioner = false;
    choice.form.branch = {1, 1};
    if (oneIn(4))
        choice.form.oral = OralForms::Saitama;
    SetPrintJob job(m_practice.environment, m_practice.database.db);
    const Result<> gathered = job.gather(orders(asked), choice, QDate(2026, 11, 21));
    ASSERT_TRUE(gathered) << gathered.reason().toStdString();
    const LetterCheck check = job.check();
    if (check.refusal) {
        EXPECT_TRUE(std::ranges::none_of(asked, [&](size_t row) {
            return isLast(m_rows[row]) &&
                   (choice.requestLetters || (choice.consentForms && !m_rows[row].oral));
        })) << check.refusal->text.toStdString();
        return;
    }
    m_papers.clear();
    m_builderFails = oneIn(3);
    int chunks = oneIn(4) ? 1 : 1000; // cancelled after the first
    const BatchResult result =
        BatchPrint(m_practice.environment, BatchOrder{.commandFile = u"DouiCom.dat"_s})
            .run(job.document(), [&](int done, int) { return done == 0 || chunks > 1; });
    m_builderFails = false;

    // Every document says what its row says, behind the envelope of its row's addressee.
    std::map<size_t, int> letters, forms;
    QStringList left, stayed;
    QString envelope;
    std::vector<size_t> printed(asked);
    std::erase_if(printed, [&](size_t row) { return !isLast(m_rows[row]); });
    const auto expectBehind = [&](const Row &row) {
        // An address alone is nobody, and nobody without a place is to be found.
        if (choice.envelopes && !(institution(row) + doctorName(row)).isEmpty() &&
            !(institution(row) + address(row)).isEmpty()) {
            EXPECT_EQ(envelope, institution(row) + u'|' + address(row)) << row.diagnosis().toStdString();
        }
    };
    for (const Paper &paper : m_papers) {
        if (isEnvelope(paper)) {
            envelope = paper.at(u"宛名施設"_s) + u'|' + paper.at(u"宛先住所１"_s);
        } else if (isLetter(paper)) {
            const std::vector<size_t> rows = rowsOfLetter(paper);
            expectLetter(paper, rows);
            for (const size_t row : rows) {
                ++letters[row];
                expectBehind(m_rows[row]);
                if (paper.left)
                    left += m_rows[row].diagnosis();
            }
        } else if (const Row *row = rowOfDiagnosis(paper.at(u"傷病名"_s)); row) {
            ++forms[size_t(row - m_rows.data())];
            const auto beside = std::ranges::find_if(printed, [&](size_t other) {
                return m_rows[other].patient == row->patient && m_rows[other].correction != row->correction &&
                       addressee(m_rows[other]) == addressee(*row) && m_rows[other].doctor == row->doctor &&
                       m_rows[other].oral == row->oral;
            });
            const bool continued =
                choice.requestLetters && (row->continues || (!row->correction && beside != printed.end() &&
                                                             m_rows[*beside].continues));
            expectForm(paper, *row, continued || isAgain(*row));
            expectBehind(*row);
        } else {
            ADD_FAILURE() << "a form of no row: " << paper.at(u"傷病名"_s).toStdString();
        }
    }

    // Nobody twice, nobody lost: a batch that was cut short printed its beginning.
    const bool whole = m_papers.size() == size_t(job.count());
    for (const auto &[row, times] : letters)
        EXPECT_EQ(times, 1) << m_rows[row].diagnosis().toStdString();
    for (const auto &[row, times] : forms)
        EXPECT_EQ(times, 1) << m_rows[row].diagnosis().toStdString();
    const QString notes = check.notes.join(u'\n');
    for (const size_t at : asked) {
        const Row &row = m_rows[at];
        if (choice.requestLetters && whole) {
            EXPECT_EQ(letters.contains(at), isLast(row)) << row.diagnosis().toStdString();
        }
        if (!choice.consentForms || !whole)
            continue;
        const bool mayHave = isLast(row) && (!row.oral || choice.form.oral == OralForms::Saitama);
        const bool shared = mayHave && row.correction && std::ranges::any_of(forms, [&](const auto &form) {
                                const Row &massage = m_rows[form.first];
                                return !massage.correction && massage.patient == row.patient &&
                                       massage.doctor == row.doctor && massage.oral == row.oral &&
                                       addressee(massage) == addressee(row);
                            });
        EXPECT_EQ(forms.contains(at), mayHave && !shared) << row.diagnosis().toStdString();
        if (!mayHave) {
            EXPECT_TRUE(notes.contains(name(row.patient))) << row.diagnosis().toStdString();
        }
    }

    // What is marked is what left.
    QStringList marked;
    for (const LetterMark &mark : job.lettersThatLeft(result))
        for (const Row &row : m_rows)
            if (row.key() == mark.row)
                marked += row.diagnosis();
    marked.sort();
    left.sort();
    EXPECT_EQ(marked, left);
    if (choice.requestLetters) {
        EXPECT_EQ(size_t(marked.size() + job.lettersThatStayed(result).size()), printed.size());
    }
}

void Walk::letters() {
    struct NoWait : LetterWait {
        bool goOn() override { return true; }
    };
    const std::vector<size_t> asked = ticked();
    LetterJob job(m_practice.environment, m_practice.database.db);
    LetterOptions options;
    options.day = QDate(2026, 11, 21);
    options.grouped = oneIn(2);
    ASSERT_TRUE(job.read(orders(asked), options));
    std::vector<size_t> wanted(asked);
    std::erase_if(wanted, [&](size_t row) { return !isLast(m_rows[row]); });
    if (job.check().refusal) {
        EXPECT_TRUE(wanted.empty());
        return;
    }
    m_papers.clear();
    const Result<bool> out = job.output(
        LetterOutput::Print, [] { return std::make_unique<NoWait>(); }, nullptr);
    ASSERT_TRUE(out) << out.reason().toStdString();
    if (m_papers.empty())
        m_papers = read(m_practice.work(u"WfdCom.dat"_s));
    std::map<size_t, int> letters;
    for (const Paper &paper : m_papers) {
        const std::vector<size_t> rows = rowsOfLetter(paper);
        expectLetter(paper, rows);
        for (const size_t row : rows)
            ++letters[row];
    }
    EXPECT_EQ(letters.size(), wanted.size());
    for (const size_t row : wanted)
        EXPECT_EQ(letters[row], 1) << m_rows[row].diagnosis().toStdString();
    EXPECT_EQ(job.marks().size(), wanted.size());
}

/// All who match, as a batch, or one patient alone.
void Walk::forms() {
    ConsentFormOptions options;
    options.branch = {1, 1};
    options.master = FormMaster::Practice;
    options.kind = TreatmentKind(upTo(2));
    options.style = FormStyle(upTo(2));
    options.staff = oneIn(3) ? 1 : 0;
    options.order = FormOrder(upTo(4));
    const int one = oneIn(2) ? 1 + upTo(int(m_patients.size()) - 1) : 0;
    if (one != 0) {
        options = {.branch = {1, 1}, .patients = {one}};
    }
    Result<GatheredForms> gathered = gatherConsentForms(m_practice.database.db, options, QDate(2026, 11, 21));
    ASSERT_TRUE(gathered) << gathered.reason().toStdString();
    m_papers.clear();
    if (one != 0 && !gathered->forms.empty()) {
        cls_WfdPrintExe engine(m_practice.environment);
        engine.iInit(layoutPath(m_practice.folders, gathered->forms[0]), u"同意書印刷"_s);
        ASSERT_TRUE(writeConsentFormData({gathered->forms[0]}, engine));
        ASSERT_EQ(engine.iPutOut(PrintWay::Print), 0);
        m_papers = read(m_practice.work(u"WfdCom.dat"_s));
    } else if (one == 0) {
        BatchPrint(m_practice.environment, {})
            .run({int(gathered->forms.size()),
                  [&](int position, PrintFiles &files) {
                      return makeFormReport(m_practice.folders, gathered->forms[size_t(position)], files);
                  }},
                 {});
    }
    std::map<int, int> times;
    for (const Paper &paper : m_papers) {
        const int patient = paper.at(u"患者ID"_s).toInt();
        ++times[patient];
        const auto row = std::ranges::find_if(m_rows, [&](const Row &candidate) {
            return candidate.patient == patient && !candidate.correction && isLast(candidate);
        });
        if (row != m_rows.end())
            expectForm(paper, *row,
                       options.style == FormStyle::ByPatient ? isAgain(*row)
                                                             : options.style == FormStyle::Again);
        else
            EXPECT_EQ(paper.at(u"保険医氏名"_s), QString());
    }
    for (int number = 1; number <= int(m_patients.size()); ++number) {
        const Patient &patient = m_patients[size_t(number) - 1];
        const bool asked = one != 0
                               ? number == one
                               : !patient.ended && (options.staff == 0 || patient.staff == options.staff) &&
                                     (options.kind == TreatmentKind::All ||
                                      (options.kind == TreatmentKind::Acupuncture) == patient.acupuncture);
        const bool oral = std::ranges::any_of(m_rows, [&](const Row &row) {
            return row.patient == number && !row.correction && isLast(row) && row.oral;
        });
        EXPECT_EQ(times[number], int(asked && !oral)) << number;
        const bool named = std::ranges::any_of(gathered->leftOut, [&](const LeftOutPatient &out) {
            return out.patient.nIDNo == number && out.name == name(number);
        });
        EXPECT_EQ(named, asked && oral) << number;
    }
}

TEST(DocumentWalk, EveryDocumentSaysWhatItsRowSays) {
    const unsigned only = unsigned(qEnvironmentVariableIntValue("DOUISHO_WALK_SEED"));
    const int seconds = qEnvironmentVariableIntValue("DOUISHO_WALK_SECONDS");
    QElapsedTimer time;
    time.start();
    unsigned seed = only;
    int walks = 0;
    do {
        seed = only != 0 ? only : seconds != 0 ? std::random_device()() / 2 + 1 : seed + 1;
        SCOPED_TRACE("DOUISHO_WALK_SEED=" + std::to_string(seed));
        Walk walk(seed);
        for (int turn = 0; turn < 4; ++turn) {
            walk.sets();
            walk.letters();
            walk.forms();
        }
        ++walks;
    } while (only == 0 && !testing::Test::HasFailure() &&
             !time.hasExpired(seconds != 0 ? seconds * 1000LL : 8000));
    std::cout << walks << " practices\n";
}

} // namespace
