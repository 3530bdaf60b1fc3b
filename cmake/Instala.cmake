# Everything that `cmake --install` puts in place, by the desktop's conventions: programs, icons, desktop entry,
# AppStream data, manual pages, completions, the program's data. The tests' engine and helpers are never installed.
set(ondalis_datos ${CMAKE_INSTALL_DATADIR})
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)

# What `make build` makes: the programs, none of the tests' helpers.
add_custom_target(programas)
foreach(programa ondalis ondalisctl)
    if(TARGET ${programa})
        add_dependencies(programas ${programa})
        install(TARGETS ${programa} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
endforeach()
if(TARGET ondalis-motor)
    add_dependencies(programas ondalis-motor)
    # Nobody calls it by hand; the reader looks for it there, seen from its own folder.
    install(TARGETS ondalis-motor RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/ondalis)
endif()

# The program's own data. Whatever the build leaves in share/ondalis is installed, so that the program finds it by the
# same way from its own folder, ../share/ondalis, in the build folder and where it is installed.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/ondalis)
install(DIRECTORY ${CMAKE_BINARY_DIR}/share/ondalis/ DESTINATION ${ondalis_datos}/ondalis)

set(icono ${CMAKE_SOURCE_DIR}/resources/iconos/3)
foreach(lado 16 22 24 32 48 64 128 256)
    install(FILES ${icono}-${lado}.png DESTINATION ${ondalis_datos}/icons/hicolor/${lado}x${lado}/apps
        RENAME com.ferrano.Ondalis.png)
endforeach()
install(FILES ${icono}.svg DESTINATION ${ondalis_datos}/icons/hicolor/scalable/apps RENAME com.ferrano.Ondalis.svg)
install(FILES packaging/com.ferrano.Ondalis.desktop DESTINATION ${ondalis_datos}/applications)
install(FILES packaging/com.ferrano.Ondalis.metainfo.xml DESTINATION ${ondalis_datos}/metainfo)

# The bus starts the reader for a command. The bus wants an absolute path, and only the installation knows the prefix.
set(servicio ${CMAKE_SOURCE_DIR}/packaging/com.ferrano.Ondalis.service.in)
if(EXISTS ${servicio})
    install(CODE "
        set(CMAKE_INSTALL_BINDIR \"${CMAKE_INSTALL_BINDIR}\")
        set(CMAKE_INSTALL_FULL_BINDIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        configure_file(\"${servicio}\" \"${CMAKE_BINARY_DIR}/packaging/com.ferrano.Ondalis.service\" @ONLY)")
    install(FILES ${CMAKE_BINARY_DIR}/packaging/com.ferrano.Ondalis.service
        DESTINATION ${ondalis_datos}/dbus-1/services)
endif()

# ondalis_comprime(<file> <result>): gzip without name and time, as Debian wants manual pages and changelogs.
function(ondalis_comprime fichero resultado)
    get_filename_component(carpeta ${resultado} DIRECTORY)
    file(MAKE_DIRECTORY ${carpeta})
    add_custom_command(OUTPUT ${resultado} DEPENDS ${fichero} VERBATIM
        COMMAND sh -c "gzip -9nc '${fichero}' >'${resultado}'")
endfunction()

set(comprimidos "")
foreach(pagina ondalis ondalisctl)
    if(EXISTS ${CMAKE_SOURCE_DIR}/man/${pagina}.1 AND TARGET ${pagina})
        ondalis_comprime(${CMAKE_SOURCE_DIR}/man/${pagina}.1 ${CMAKE_BINARY_DIR}/man/${pagina}.1.gz)
        list(APPEND comprimidos ${CMAKE_BINARY_DIR}/man/${pagina}.1.gz)
        install(FILES ${CMAKE_BINARY_DIR}/man/${pagina}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    endif()
    foreach(caso "${pagina}.bash|bash-completion/completions|${pagina}" "_${pagina}|zsh/site-functions|_${pagina}"
            "${pagina}.fish|fish/vendor_completions.d|${pagina}.fish")
        string(REPLACE "|" ";" partes "${caso}")
        list(GET partes 0 origen)
        list(GET partes 1 destino)
        list(GET partes 2 nombre)
        if(EXISTS ${CMAKE_SOURCE_DIR}/packaging/completado/${origen} AND TARGET ${pagina})
            install(FILES packaging/completado/${origen} DESTINATION ${ondalis_datos}/${destino} RENAME ${nombre})
        endif()
    endforeach()
endforeach()

# Debian's package carries its own form of the licence instead.
install(FILES LICENSE DESTINATION ${ondalis_datos}/doc/ondalis COMPONENT licencia)
include(Paquete)

add_custom_target(acompana ALL DEPENDS ${comprimidos})
add_dependencies(programas acompana)
