# zvflnetwork_command_line(<tool>): makes the tool's man page and its completions for bash, zsh and fish from
# <tool>.help, the text that --help prints. That has a line of usage, a line that sums up, paragraphs, and sections with
# two columns, of which the options are one.

function(zvflnetwork_command_line tool)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tool}.help)
  file(READ ${tool}.help help)
  string(REGEX REPLACE "^R\"[(]|[)]\"\n$" "" help "${help}") # C++ includes it as a raw string
  zvflnetwork_man_page(${tool} "${help}")
  zvflnetwork_completions(${tool} "${help}")
endfunction()

function(zvflnetwork_man_page tool text)
  # What would be a macro, an escape, or another character than the one that a shell is given.
  string(REPLACE "\\" "\\e" text "${text}")
  string(REGEX REPLACE "\n( *)[.]" "\n\\1\\\\&." text "${text}")
  foreach(pair IN ITEMS "- \\-" "' \\(aq" "` \\(ga" "^ \\(ha" "~ \\(ti")
    string(REGEX MATCH "^(.) (.*)$" pair "${pair}")
    string(REPLACE "${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}" text "${text}")
  endforeach()
  foreach(heading IN ITEMS Options "Exit status" Environment Examples)
    string(TOUPPER "${heading}" title)
    string(REPLACE "\n\n${heading}:\n" "\n.SH ${title}\n" text "${text}")
  endforeach()
  # Examples stand as they are.
  string(REGEX MATCH "\n.SH EXAMPLES\n(.*)$" examples "${text}")
  string(REGEX REPLACE "(^|\n) +" "\\1" examples "${CMAKE_MATCH_1}")
  string(REGEX REPLACE "\n.SH EXAMPLES\n.*$" "\n" text "${text}")
  # A term and what is told of it.
  string(REGEX REPLACE "\n(  |      )([^ \n]([^ \n]| [^ \n])*)(  +|\n +)" "\n.TP\n.B \\2\n" text "${text}")
  string(REGEX REPLACE "\n +" "\n" text "${text}")
  string(REPLACE "\n\n" "\n.PP\n" text "${text}")
  string(REGEX REPLACE "^Usage: ([^ ]*) ([^\n]*)\n([^\n]*)[.]\n"
                       ".SH NAME\n\\1 \\\\- \\3\n.SH SYNOPSIS\n.B \\1\n\\2\n.SH DESCRIPTION\n\\3.\n" text "${text}")
  string(TOUPPER ${tool} title)
  file(
    WRITE ${CMAKE_CURRENT_BINARY_DIR}/${tool}.1
    ".TH ${title} 1 \"\" \"libzvflnetwork ${PROJECT_VERSION}\" \"User Commands\"\n${text}.SH EXAMPLES\n.EX\n${examples}.EE\n")
endfunction()

function(zvflnetwork_completions tool help)
  set(made "# Completions of ${tool}, made from its --help.\n")
  set(bash "")
  set(zsh "#compdef ${tool}\n${made}_arguments")
  set(fish "${made}")
  while(help MATCHES "\n +((-[a-z]), )?(--[a-z-]+)( ([A-Z=]+))?(  +|\n +)([^\n]*(\n          +[^\n]+)*)")
    set(item "${CMAKE_MATCH_0}")
    set(short "${CMAKE_MATCH_2}")
    set(long "${CMAKE_MATCH_3}")
    set(value "${CMAKE_MATCH_5}")
    string(REGEX REPLACE "\n +" " " words "${CMAKE_MATCH_7}")
    string(REGEX REPLACE ";.*$" "" words "${words}")
    string(REPLACE "${item}" "" help "${help}")

    string(REPLACE "'" "'\\''" words "${words}") # as sh, zsh and fish quote it
    string(APPEND bash " ${short} ${long}")
    string(APPEND fish "complete -c ${tool}")
    if(value STREQUAL "")
      set(zsh_value "")
      set(sign "")
    else()
      set(zsh_value ":${value}: ")
      set(sign "=")
      if(value STREQUAL "FILE")
        set(zsh_value ":${value}:_files")
        string(APPEND fish " -r")
      else()
        string(APPEND fish " -x")
      endif()
    endif()
    if(short)
      string(APPEND zsh " \\\n    '*${short}[${words}]${zsh_value}'")
      string(REPLACE "-" " -s " letter "${short}")
      string(APPEND fish "${letter}")
    endif()
    string(APPEND zsh " \\\n    '*${long}${sign}[${words}]${zsh_value}'")
    string(REGEX REPLACE "^--" " -l " name "${long}")
    string(APPEND fish "${name} -d '${words}'\n")
  endwhile()
  string(REGEX REPLACE "  +" " " bash "${bash}")
  string(STRIP "${bash}" bash)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${tool}.bash
       "${made}_${tool}() {
    COMPREPLY=()
    if [[ $2 == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '${bash}' -- \"$2\")
    fi
}
complete -o default -F _${tool} ${tool}
")
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/_${tool} "${zsh} \\\n    '*: :_default'\n")
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${tool}.fish "${fish}")
endfunction()
