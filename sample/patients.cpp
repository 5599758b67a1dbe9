#include "sample/patients.h"

#include "db/tables/patient/acupuncture_diseases.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

QString massageDiagnosis(Random &random) {
    static const QList<QString> list = {u"脳梗塞後遺症"_s,       u"脳出血後遺症"_s,      u"パーキンソン病"_s,
                                        u"変形性膝関節症"_s,     u"関節リウマチ"_s,      u"廃用症候群"_s,
                                        u"脊柱管狭窄症"_s,       u"変形性股関節症"_s,    u"頸髄損傷"_s,
                                        u"大腿骨頸部骨折術後"_s, u"筋萎縮性側索硬化症"_s};
    return random.pick(list);
}

const QList<QString> &acupunctureDiseases() {
    static const QList<QString> list = [] {
        QList<QString> names;
        for (const QStringView name : acupunctureDiseaseNames)
            names.append(name.toString());
        return names + QList<QString>{u"その他"_s};
    }();
    return list;
}

} // namespace

const Consent &Patient::newestConsent() const {
    return *std::find_if(consents.begin(), consents.end(),
                         [](const Consent &c) { return c.newest && !c.deformity; });
}

const Doctor *Patient::doctorOf(const Consent &consent) const {
    const Doctor *own = consent.deformity ? correctionDoctor : consent.newest ? nullptr : earlierDoctor;
    return own ? own : doctor;
}

PatientMaker::PatientMaker(Random &random, const Masters &masters, QDate day)
    : m_random(random), m_masters(masters), m_day(day) {
    for (const Branch &branch : sampleBranches()) {
        Pool pool{branch, {}, {}};
        for (const Staff &person : masters.staff)
            if (person.branch == branch && !person.suspended)
                pool.staff.append(person.id);
        for (const Counsellor &counsellor : masters.counsellors)
            if (counsellor.branch == branch)
                pool.counsellors.append(&counsellor);
        m_pools.append(pool);
    }
}

PatientMaker::Cast PatientMaker::nextCast() {
    if (m_block.isEmpty()) {
        m_block = {
            {Course::Running, false, false},   {Course::Running, false, false},
            {Course::Running, false, false},   {Course::Running, false, false},
            {Course::Running, false, false},   {Course::Running, false, false},
            {Course::Running, false, true},    {Course::Running, false, true},
            {Course::Running, true, false},    {Course::Running, true, false},
            {Course::Due, false, false},       {Course::Due, true, false},
            {Course::Requested, false, false}, {Course::Requested, false, true},
            {Course::Received, false, false},  {Course::Received, false, true},
            {Course::Received, true, false},   {Course::Lapsed, false, false},
            {Course::Ended, false, false},     {Course::New, false, false},
        };
        m_random.shuffle(m_block);
    }
    return m_block.takeLast();
}

void PatientMaker::givePerson(Patient &patient) {
    patient.sex = m_random.percent(62) ? Sex::Woman : Sex::Man;
    const int age = m_random.between(58, 98);
    patient.birthday = m_day.addYears(-age).addDays(-m_random.below(365));
    patient.name = makeName(m_random, patient.sex, patient.birthday.year());
    patient.kana = kanaOfSomeKind(m_random, patient.name.kana);
    patient.place = makePlace(m_random);
    patient.telephone = m_random.percent(92) ? makeTelephone(m_random) : QString();
    const bool elder = age >= 75;
    QList<const Insurer *> insurers;
    for (const Insurer &insurer : m_masters.insurers)
        if ((insurer.kind == 3) == elder)
            insurers.append(&insurer);
    patient.insurer = m_random.pick(insurers);
}

void PatientMaker::giveContent(Patient &patient) {
    TreatmentContent &content = patient.content;
    content.warmth = m_random.percent(25);
    content.electric = m_random.percent(12);
    if (content.acupuncture) {
        content.diseases = 1 << m_random.below(7);
        if (m_random.percent(30))
            content.diseases |= 1 << m_random.below(6);
        QStringList names;
        for (int i = 0; i < 7; ++i)
            if (content.diseases >> i & 1)
                names.append(acupunctureDiseases().at(i));
        content.diagnosis = names.join(u'、');
        if (content.diseases >> 6 & 1)
            content.otherSymptom = u"変形性膝関節症による疼痛"_s;
        return;
    }
    content.parts = m_random.between(1, 31);
    content.paralysis = m_random.percent(60) ? content.parts & m_random.between(1, 31) : 0;
    content.contractures = m_random.percent(70) ? m_random.below(4096) & m_random.below(4096) : 0;
    content.diagnosis = massageDiagnosis(m_random);
    if (m_random.percent(10))
        content.otherSymptom = u"脊柱の可動域制限"_s;
}

void PatientMaker::giveCare(Patient &patient) {
    const auto pool = std::find_if(m_pools.begin(), m_pools.end(),
                                   [&patient](const Pool &p) { return p.branch == patient.branch; });
    const int helpers = m_random.percent(1) ? 0 : 1 + m_random.below(m_random.percent(80) ? 2 : 5);
    for (int i = 0; i < helpers; ++i)
        patient.staff.append(m_random.pick(pool->staff));
    if (!m_random.percent(1))
        patient.doctor = &m_random.pick(m_masters.doctors);
    if (m_random.percent(12))
        patient.secondDoctor = &m_random.pick(m_masters.doctors);
    if (m_random.percent(30))
        patient.home = &m_random.pick(m_masters.homes);
    if (m_random.percent(60))
        patient.counsellor = m_random.pick(pool->counsellors);
    if (m_random.percent(70))
        patient.careManager = &m_random.pick(m_masters.careManagers);
    patient.careDegree = patient.careManager ? m_random.between(1, 7) : 0;
    patient.hasSubRow = !m_random.percent(1);
    patient.hasPeriodSettings = !m_random.percent(5);
    patient.ownLayouts = m_random.percent(8);
}

void PatientMaker::giveHistory(Patient &patient, Course course) {
    const QDate firstConsent = patient.consents.first().day;
    // Some came before consents were kept here, so their first consent is a renewal.
    patient.firstTreatment = course != Course::New && m_random.percent(20)
                                 ? firstConsent.addDays(-m_random.between(200, 1500))
                                 : firstConsent.addDays(m_random.below(4));
    patient.firstTreatment = std::min(patient.firstTreatment, m_day);
    if (m_random.percent(85))
        patient.onset = firstConsent.addDays(-m_random.between(60, 4000));
    if (patient.secondDoctor)
        patient.secondDay = std::min(patient.newestConsent().day.addDays(m_random.between(-60, 20)), m_day);
    if (m_random.percent(90))
        patient.updated = officeTime(m_random, m_day.addDays(-m_random.below(60)));
    if (m_random.percent(40))
        patient.outcome = 0;
    if (course != Course::Ended)
        return;
    // Data as it is: an end without an outcome, an outcome without an end, and both.
    static const QList<std::optional<int>> outcomes = {1, 3, 15, 2, {}};
    patient.outcome = outcomes.at(patient.id % 5);
    const bool leftOut = patient.outcome == 1 || patient.outcome == 3 || patient.outcome == 15;
    if (!leftOut || m_random.percent(80))
        patient.expires = std::min(patient.newestConsent().period.end, m_day).addDays(-m_random.below(20));
}

// Corrections by another doctor than the massage, who may answer by word of mouth where the other writes; and
// patients who came to their doctor from another.
void PatientMaker::giveOtherDoctors(Patient &patient) const {
    if (!patient.doctor)
        return;
    const auto other = [&](int further) {
        return &m_masters.doctors.at((patient.doctor->id - 1 + further) % m_masters.doctors.size());
    };
    if (patient.id % 9 == 0)
        patient.earlierDoctor = other(1);
    if (patient.id % 3 != 0)
        return;
    patient.correctionDoctor = other(2);
    for (Consent &consent : patient.consents)
        if (consent.deformity && consent.newest && patient.id % 2 == 0)
            consent.oral = !patient.newestConsent().oral;
}

Patient PatientMaker::make(Branch branch, int id) {
    const Cast cast = nextCast();
    Patient patient;
    patient.branch = branch;
    patient.id = id;
    patient.content.acupuncture = cast.acupuncture;
    givePerson(patient);
    giveContent(patient);
    giveCare(patient);
    patient.consents = makeConsents(m_random, cast.course, cast.deformity, m_day);
    giveHistory(patient, cast.course);
    giveOtherDoctors(patient);
    return patient;
}

} // namespace sample
