# How a program is named in the files that start it, each kind of which quotes by its own rules. Included when the tree
# is configured, and again when it is installed, for a prefix may be given then.
cmake_policy(VERSION 3.25)

# No desktop entry may name a program with = in its path, and none of these files goes on in a further line.
set(unnameable "[=\n\r\t]")
# CMake keeps no such prefix as it was when configured with it; one given to --install it does.
set(unnameable_when_configured "[=\n\r\t;\"\\]|\\\$(ENV|CACHE)?{")

function(refuse_unnameable prefix unnameable)
  if(prefix MATCHES "${unnameable}")
    message(FATAL_ERROR "Nothing could start Velmora from the prefix ${prefix}, because of ${CMAKE_MATCH_0} in it. "
                        "Please choose another one.")
  endif()
endfunction()

# write_naming_programs(FOLDER TEMPLATE FILE): the template, with the folder of the programs as each place wants it.
function(write_naming_programs folder template file)
  # A string of a desktop entry or of a bus service.
  string(REPLACE "\\" "\\\\" as_string "${folder}")
  # In the double quotes of an entry's Exec, which is such a string.
  string(REGEX REPLACE "([\"`$\\])" "\\\\\\1" in_exec "${folder}")
  string(REPLACE "\\" "\\\\" in_exec "${in_exec}")
  string(REPLACE "%" "%%" in_exec "${in_exec}")
  # Desktops look for the program before they read the doubled sign as one, but leave an argument alone.
  set(starter "")
  if(folder MATCHES "%")
    set(starter "/usr/bin/env ")
  endif()
  # In the single quotes of a bus service's Exec.
  string(REPLACE "'" "'\"'\"'" in_bus_service "${as_string}")
  # In a double-quoted argument of a systemd unit.
  string(REGEX REPLACE "([\"\\])" "\\\\\\1" in_unit "${folder}")
  string(REGEX REPLACE "([%$])" "\\1\\1" in_unit "${in_unit}")
  configure_file("${template}" "${file}" @ONLY)
endfunction()
