# What programs have on Windows: no console where there are windows, and what the Explorer says of them.
enable_language(RC)
set(CMAKE_RC_FLAGS "--codepage=65001")

function(douisho_windows_program name icon description)
  cmake_parse_arguments(PARSE_ARGV 3 program "CONSOLE" "" "")
  if(NOT program_CONSOLE)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/windows/${name}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/windows.rc.in ${resource} @ONLY)
  target_sources(${name} PRIVATE ${resource})
  set_source_files_properties(${resource} TARGET_DIRECTORY ${name}
    PROPERTIES OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/windows.manifest)
endfunction()

douisho_windows_program(douisho douisho "同意書管理")
douisho_windows_program(douisho-menu douisho "メニュー")
douisho_windows_program(douisho-sample douisho "見本の作成" CONSOLE)
douisho_windows_program(wfrfv10 viewer "帳票ビューアー")
douisho_windows_program(wfrimg10 viewer "帳票作成")
