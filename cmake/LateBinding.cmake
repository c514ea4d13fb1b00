# Late binding: functions of some libraries are called like any others, but the libraries are loaded by the program
# itself when it first needs them (desktop::loadLibrary), so that a start costs nothing for what it does not show.

# add_late_binding(<target> SOURCES <file>... <GROUP> <library>...)
#
# Lists the functions that <target>, a static library, takes from the libraries of each group, and gives whoever links
# it entries of those names in their place. The first library of a group is the one that is opened.
function(add_late_binding target)
  cmake_parse_arguments(LATE "" "" "SOURCES;TOOLKIT;ENGINE" ${ARGN})
  set(symbols ${CMAKE_CURRENT_BINARY_DIR}/late/LateBindingSymbols.inc)
  set(groups)
  set(foundations)
  foreach(group Toolkit Engine)
    string(TOUPPER ${group} variable)
    set(files)
    foreach(name ${LATE_${variable}})
      find_library(PERCHLY_LATE_${name} ${name} REQUIRED)
      list(APPEND files ${PERCHLY_LATE_${name}})
    endforeach()
    list(GET files 0 first)
    execute_process(COMMAND ${CMAKE_OBJDUMP} -p ${first} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCH "SONAME +([^\n ]+)" ignored "${headers}")
    list(APPEND sonames PERCHLY_${variable}_SONAME="${CMAKE_MATCH_1}")
    list(APPEND groups ${group} ${files})
    string(REGEX MATCHALL "NEEDED +lib[^\n ]+" needed "${headers}")
    foreach(entry ${needed})
      string(REGEX REPLACE "NEEDED +lib(.+)\\.so.*" "\\1" name "${entry}")
      if(NOT name IN_LIST LATE_${variable})
        string(REGEX REPLACE "NEEDED +" "" entry "${entry}")
        string(APPEND foundations "LATE_FOUNDATION(${group}, \"${entry}\")\n")
      endif()
    endforeach()
  endforeach()
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/late/LateBindingFoundations.inc CONTENT "${foundations}" @ONLY)

  add_custom_command(OUTPUT ${symbols}
    COMMAND ${PROJECT_SOURCE_DIR}/cmake/late-binding-symbols ${CMAKE_NM} $<TARGET_FILE:${target}> ${symbols} ${groups}
    DEPENDS ${target} ${PROJECT_SOURCE_DIR}/cmake/late-binding-symbols
    COMMENT "Listing the late-bound functions of ${target}"
    VERBATIM)
  add_library(${target}_late STATIC ${LATE_SOURCES} ${symbols})
  target_include_directories(${target}_late PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/late ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(${target}_late PRIVATE ${sonames})
  target_link_libraries(${target}_late PUBLIC perchly_foundation ${CMAKE_DL_LIBS})
  # Not through target_link_libraries on the target itself alone: the two need each other.
  target_link_libraries(${target} INTERFACE ${target}_late)
endfunction()
