# Fees: what is in force in a month, the fee for a distance, and a gap between the bands.

tour_fees() {
    key ctrl+shift+r
    window '料金'
    shot fees 'その月に有効な療養費と往療料' window
    key alt+k
    write 20000
    glance fee-beyond-the-last-band
    key alt+l
    glance fee-of-the-band-before-the-last
    key alt+m
    write 'R6.9'
    key Return
    glance fees-before-the-change
    # A band goes on where the last one ends; what it leaves out is told.
    key Tab Tab Tab ctrl+End F1
    sleep 0.5
    write 30000
    key Return Left F2 ctrl+a
    write 20000
    key Return
    sleep 0.3
    glance fee-bands-with-a-gap
    key F5
    sleep 0.5
    glance fee-bands-asked
    key Return
    sleep 0.5
    key F12
    sleep 0.5
    glance fee-bands-unsaved
    key alt+n
    gone '料金'
    window '同意書管理'
}
