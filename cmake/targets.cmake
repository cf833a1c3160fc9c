# The targets of the build: one library file each, named in targets/list (the
# baseline first) and described by targets/<name>.target: its flags, vector
# width, SIMD header and install folder.  Adding a target is a description, a
# SIMD header and a line of the list; nothing here names one.
file(STRINGS ${PROJECT_SOURCE_DIR}/targets/list kvtg_listed_targets REGEX "^[^#]")
set(KVTG_TARGETS "${kvtg_listed_targets}" CACHE STRING
  "Targets to build a library file for, of targets/list; the first is the baseline")
list(GET KVTG_TARGETS 0 KVTG_BASELINE)

# Sets KVTG_<name>_<key> for every "key = value" line of targets/<name>.target
# (dashes in keys become underscores: KVTG_x86-64-v3_install_folder).
function(kvtg_read_target name)
  set(file ${PROJECT_SOURCE_DIR}/targets/${name}.target)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "target ${name} has no description ${file}")
  endif()
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(STRINGS ${file} lines REGEX "^[a-z-]+ *=")
  foreach(line IN LISTS lines)
    string(REGEX MATCH "^([a-z-]+) *= *(.*)$" matched "${line}")
    string(REPLACE "-" "_" key ${CMAKE_MATCH_1})
    set(KVTG_${name}_${key} "${CMAKE_MATCH_2}" PARENT_SCOPE)
  endforeach()
endfunction()

foreach(target IN LISTS KVTG_TARGETS)
  kvtg_read_target(${target})
endforeach()

# The suffix of a target's CMake names: none for the baseline (kvtgenn8,
# kvtg_complex), _<name> for the others (kvtgenn8_x86-64-v3).
function(kvtg_target_suffix target out)
  if(target STREQUAL KVTG_BASELINE)
    set(${out} "" PARENT_SCOPE)
  else()
    set(${out} _${target} PARENT_SCOPE)
  endif()
endfunction()
