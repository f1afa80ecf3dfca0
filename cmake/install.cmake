# What `cmake --install` puts in place. Everything finds the rest relative to itself, so the prefix may be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/NfcNdef)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(libraries nfc_ndef)
if(TARGET nfc_ndef_static)
  list(APPEND libraries nfc_ndef_static)
endif()
install(TARGETS ${libraries} EXPORT NfcNdefTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT NfcNdefTargets NAMESPACE NfcNdef:: DESTINATION ${package_dir})
write_basic_package_version_file(NfcNdefConfigVersion.cmake COMPATIBILITY SameMajorVersion)
# A static library alone has to be linked with GLib by every program.
set(links_glib FALSE)
if(NFC_NDEF_GLIB AND NOT BUILD_SHARED_LIBS)
  set(links_glib TRUE)
endif()
configure_file(cmake/NfcNdefConfig.cmake.in NfcNdefConfig.cmake @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/NfcNdefConfig.cmake ${PROJECT_BINARY_DIR}/NfcNdefConfigVersion.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH pc_to_prefix /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
if(NFC_NDEF_GLIB)
  set(pc_libs_private "Libs.private: -lglib-2.0\n")
endif()
configure_file(cmake/nfc-ndef.pc.in nfc-ndef.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nfc-ndef.pc DESTINATION ${pkgconfig_dir})

if(NFC_NDEF_VALUES)
  install(TARGETS nfc_ndef_values EXPORT NfcNdefValuesTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT NfcNdefValuesTargets NAMESPACE NfcNdef:: DESTINATION ${package_dir})
  install(DIRECTORY values/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nfc_ndef
    FILES_MATCHING PATTERN "*.h" PATTERN c_interface.h EXCLUDE PATTERN json EXCLUDE)
endif()

if(NFC_NDEF_PCSC)
  install(TARGETS nfc_ndef_tags EXPORT NfcNdefTagsTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT NfcNdefTagsTargets NAMESPACE NfcNdef:: DESTINATION ${package_dir})
  install(FILES tags/card.h tags/error.h tags/pcsc.h tags/tag.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nfc_ndef/tags)
endif()

if(NFC_NDEF_PYTHON)
  install(TARGETS nfc_ndef_python LIBRARY DESTINATION ${NFC_NDEF_PYTHON_DIR}/nfc_ndef)
  install(DIRECTORY python/nfc_ndef DESTINATION ${NFC_NDEF_PYTHON_DIR}
    FILES_MATCHING PATTERN "*.py" PATTERN "*.pyi" PATTERN py.typed PATTERN __pycache__ EXCLUDE)
endif()

if(NFC_NDEF_TOOL)
  file(RELATIVE_PATH bin_to_lib /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(ndef PROPERTIES INSTALL_RPATH $ORIGIN/${bin_to_lib})
  install(TARGETS ndef RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  configure_file(docs/ndef.1 ndef.1 @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/ndef.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES docs/ndef-message.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/nfc-ndef)
endif()

# `cmake --build BUILD --target uninstall` takes back what the last installation from there put in place.
configure_file(cmake/uninstall.cmake.in uninstall.cmake @ONLY)
if(NOT TARGET uninstall)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_BINARY_DIR}/uninstall.cmake)
endif()
