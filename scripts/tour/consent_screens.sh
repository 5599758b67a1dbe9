# Which consent forms are used: the company's, with the preview; a patient's own; a re-consent form printed with them.

tour_consent_screens() {
    tour_company_forms
    tour_patient_forms
}

tour_company_forms() {
    window '同意書管理'
    key ctrl+shift+y
    window '同意書式設定'
    sleep 1
    shot company-consent-forms '会社の同意書式。見本を見ながら選びます' window
    key alt+3 Up
    sleep 1
    glance company-letter-sample
    # What stands on the form is seen on the sample at once.
    key alt+2 Down Up alt+v Return
    sleep 1
    key alt+s
    sleep 1
    glance company-without-treatment
    key alt+s F5
    window '確認'
    glance company-consent-forms-asked
    key Return
    gone '同意書式設定'
}

tour_patient_forms() {
    window '同意書管理'
    key ctrl+l
    window '保存確認'
    glance patient-consent-forms-asked
    key Return
    window '同意書式設定（利用者）'
    sleep 1
    glance patient-consent-forms
    key alt+b alt+n
    sleep 1
    glance patient-own-settings
    key F10
    window '印刷問合せ'
    key Return
    window '同意書印刷'
    sleep 1
    glance patient-re-consent-form
    key F12
    gone '同意書印刷'
    window '同意書式設定（利用者）'
    key F12
    gone '同意書式設定（利用者）'
    window '同意書管理'
}
