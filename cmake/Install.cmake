# What is installed, in four components: runtime (the shared library), development (headers, package files, the
# debuggers' helpers; the static library), tools (with man pages and completions) and documentation (the site, once the
# target docs has made it).

include(CMakePackageConfigHelpers)

install(
  TARGETS zvflnetwork
  EXPORT zvflnetworkTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/foundation ${PROJECT_BINARY_DIR}/include/foundation DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN "*.hpp")

# find_package(zvflnetwork CONFIG)
if(ZVFLNETWORK_STATIC)
  set(library_kind static)
else()
  set(library_kind shared)
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zvflnetwork)
install(EXPORT zvflnetworkTargets NAMESPACE zvflnetwork:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/zvflnetworkConfig.cmake.in zvflnetworkConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(zvflnetworkConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zvflnetworkConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/zvflnetworkConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT development)

# pkg-config zvflnetwork. Paths are told from where the file stands, so that the installed tree can be moved. A user
# of the shared library needs none of ICU.
file(RELATIVE_PATH pkgconfig_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
if(ZVFLNETWORK_STATIC)
  set(pkgconfig_requires "Requires: icu-uc\n")
  set(pkgconfig_libs " -pthread")
endif()
foreach(dir IN ITEMS LIBDIR INCLUDEDIR) # which may be told as absolute paths, outside the prefix
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
    set(pkgconfig_${dir} "${CMAKE_INSTALL_${dir}}")
  else()
    set(pkgconfig_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
  endif()
endforeach()
configure_file(cmake/zvflnetwork.pc.in zvflnetwork.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zvflnetwork.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

# GDB loads a script of this name by itself for the library: from its own folder where that is shared with the
# system's libraries, else from beside the library once the user trusts that folder. Visual Studio's debugger takes the
# other file.
if(NOT ZVFLNETWORK_STATIC)
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(gdb_dir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR})
  else()
    set(gdb_dir ${CMAKE_INSTALL_LIBDIR})
  endif()
  install(FILES debug/zvflnetwork-gdb.py DESTINATION ${gdb_dir} RENAME libzvflnetwork.so.${PROJECT_VERSION}-gdb.py
          COMPONENT development)
endif()
install(FILES debug/zvflnetwork.natvis DESTINATION ${CMAKE_INSTALL_DATADIR}/zvflnetwork COMPONENT development)

# Under /usr the system's loader finds the library; elsewhere a tool knows where it is from where it stands itself.
# Debian's zsh looks for the completions of packages in a folder of its own.
if(ZVFLNETWORK_TOOLS)
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(zsh_folder vendor-completions)
  else()
    set(zsh_folder site-functions)
    file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(iri_inspect net_inspect PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  endif()
  install(TARGETS iri_inspect net_inspect RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  foreach(tool IN ITEMS iri_inspect net_inspect)
    set(made ${CMAKE_CURRENT_BINARY_DIR}/examples)
    install(FILES ${made}/${tool}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
    install(FILES ${made}/${tool}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${tool}
            COMPONENT tools)
    install(FILES ${made}/_${tool} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder} COMPONENT tools)
    install(FILES ${made}/${tool}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tools)
  endforeach()
endif()

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
        OPTIONAL)

# cpack -G DEB
set(CPACK_PACKAGE_CONTACT "libzvflnetwork developers")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/packages)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development documentation)
if(ZVFLNETWORK_TOOLS)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzvflnetwork${soversion})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzvflnetwork-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libboost-dev (>= 1.74)")
if(ZVFLNETWORK_STATIC)
  list(REMOVE_ITEM CPACK_COMPONENTS_ALL runtime)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libicu-dev")
else()
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
         ", ${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
endif()
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME libzvflnetwork-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION net)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
if(NOT ZVFLNETWORK_STATIC) # the library is not installed yet where packages are made
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_CURRENT_BINARY_DIR}/src)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
endif()
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libzvflnetwork-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The shared library.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, package files and the debuggers' helpers.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "The programs iri_inspect and net_inspect.")
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION "The documentation.")
include(CPack)
