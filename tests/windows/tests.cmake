# The tests that Wine runs, of the files that tests/CMakeLists.txt names for Debian: what reads and writes bytes, and what
# must not be lost. Those that start servers or scripts, or ask for Unix' own permissions, are not among them.
douisho_test(base_tests
  ROOMS douisho_base
  FILES base/codepage932_test.cpp base/dates_test.cpp base/folders_test.cpp base/ini_file_test.cpp
    base/profile_text_test.cpp base/text_test.cpp)

douisho_test(platform_tests
  ROOMS douisho_base
  FILES windows/platform_test.cpp)

douisho_test(db_tests
  ROOMS douisho_db
  WITH ICU::uc ICU::i18n
  FILES db/adodb_test.cpp db/dialect_test.cpp db/any_database.h db/embedded_database.h db/japanese_test.cpp
    db/provider_contract.cpp db/provider_contract.h db/recordset_test.cpp db/sqlite_contract_test.cpp)

douisho_test(command_file_tests
  ROOMS douisho_report
  FILES viewer/command_file_test.cpp)

douisho_form_test(report_tests
  ROOMS douisho_report
  FILES viewer/data_table_test.cpp viewer/layout_reader_test.cpp viewer/pages_test.cpp viewer/pdf_test.cpp
    viewer/report_fixture.cpp viewer/report_fixture.h viewer/text_setting_test.cpp)
target_compile_definitions(report_tests PRIVATE DOUISHO_TOP="${CMAKE_SOURCE_DIR}")

douisho_test(consent_rules_tests
  ROOMS douisho_rules
  FILES consent/period_basis_test.cpp consent/period_test.cpp consent/period_text_test.cpp)

douisho_test(consent_renewal_tests
  ROOMS douisho_record
  FILES consent/consent_rows.cpp consent/newest_marks_test.cpp consent/renewal_run_test.cpp
    consent/renewal_test.cpp)

# Through ODBC: the system's manager, which Wine hands on to the one of this machine.
function(douisho_on_lent_server name filter)
  add_test(NAME ${name}.on_postgres COMMAND ${CMAKE_SOURCE_DIR}/build/dev/bin/lend_server
    ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}> --gtest_filter=${filter})
  set_tests_properties(${name}.on_postgres PROPERTIES ENVIRONMENT DOUISHO_TEST_ENGINE=PostgreSQL TIMEOUT 300
    PASS_REGULAR_EXPRESSION "PASSED  ] [1-9]" FAIL_REGULAR_EXPRESSION "FAILED")
endfunction()

douisho_on_lent_server(db_tests Dialect.*:Japanese.*)
douisho_on_lent_server(consent_renewal_tests "-*FailureOfOneRow*:*ABatchWhoseConnection*:*WhatCannotBeRenewed*")
