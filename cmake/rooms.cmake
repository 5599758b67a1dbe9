# A room is a library of its own and uses only rooms that were added before it, so that the order of
# add_subdirectory is the order of the house. Debug builds make the rooms shared libraries: CMake refuses a circle
# of them, and the linker refuses one that calls a room it does not use.

set_property(GLOBAL PROPERTY DOUISHO_ROOMS)

# Part of douisho_room: the files of a folder by their stems, "dates" for dates.h, dates.cpp and dates.ui.
function(douisho_files result)
  set(files)
  foreach(stem ${ARGN})
    set(found)
    foreach(ending cpp h ui)
      if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${stem}.${ending})
        list(APPEND found ${CMAKE_CURRENT_SOURCE_DIR}/${stem}.${ending})
      endif()
    endforeach()
    if(NOT found)
      message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/${stem} is no file")
    endif()
    list(APPEND files ${found})
  endforeach()
  set(${result} ${files} PARENT_SCOPE)
endfunction()

# douisho_room(name FILES stems… [USES rooms…] [WITH libraries…] [HIDDEN libraries…])
#   WITH    libraries of others that the room's headers need
#   HIDDEN  those that only its own sources need
function(douisho_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "FILES;USES;WITH;HIDDEN")
  foreach(used ${room_USES})
    if(NOT TARGET ${used})
      message(FATAL_ERROR "${name} uses ${used}, which does not lie below it")
    endif()
  endforeach()
  douisho_files(files ${room_FILES})
  add_library(${name} ${files})
  # Precompiled headers are shared by rooms: no room has a macro of its own.
  set_target_properties(${name} PROPERTIES DEFINE_SYMBOL "")
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name}
    PUBLIC douisho_options ${room_USES} ${room_WITH}
    PRIVATE ${room_HIDDEN})
  set_property(GLOBAL APPEND PROPERTY DOUISHO_ROOMS ${name})
  set_property(TARGET ${name} PROPERTY DOUISHO_USES "${room_USES}")

  # What nearly every file includes is read once: a third less to build from nothing. A compiler cache and
  # precompiled headers get in each other's way; builds with one also show every include that is missing.
  if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
    if(Qt6::Widgets IN_LIST room_WITH)
      target_precompile_headers(${name} PRIVATE <QtWidgets> <memory> <optional> <vector>)
    elseif(Qt6::Core IN_LIST room_WITH)
      target_precompile_headers(${name} PRIVATE
        <QDate> <QFile> <QHash> <QList> <QRegularExpression> <QString> <QStringList> <memory> <optional> <vector>)
    elseif(TARGET douisho_widgets AND douisho_widgets IN_LIST room_USES)
      target_precompile_headers(${name} REUSE_FROM douisho_widgets)
    else()
      target_precompile_headers(${name} REUSE_FROM douisho_base)
    endif()
  endif()
endfunction()
