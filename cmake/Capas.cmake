# ondalis_cierra_capa(<target>): what the rules of `core` forbid does not compile in the target. Qt Core brings the
# parent folder of all Qt modules into the include path, and system headers are always in reach; so a folder of headers
# that hold nothing but an #error, one for each forbidden name, is searched first. They are made at configure time from
# the modules that are really there.
set(ONDALIS_CABECERAS_VEDADAS
    QProcess QtCore/QProcess QtCore/qprocess.h qprocess.h QProcessEnvironment QtCore/QProcessEnvironment
    sys/socket.h sys/un.h sys/wait.h netinet/in.h arpa/inet.h netdb.h spawn.h poll.h sys/epoll.h
    pulse/pulseaudio.h pulse/simple.h espeak-ng/speak_lib.h espeak-ng/espeak_ng.h sonic.h)

function(ondalis_cierra_capa objetivo)
    set(carpeta ${CMAKE_BINARY_DIR}/vedadas)
    if(NOT EXISTS ${carpeta}/.hecho)
        get_target_property(incluye Qt6::Core INTERFACE_INCLUDE_DIRECTORIES)
        set(nombres ${ONDALIS_CABECERAS_VEDADAS})
        foreach(raiz ${incluye})
            file(GLOB cabeceras RELATIVE ${raiz}
                ${raiz}/QtWidgets/* ${raiz}/QtGui/* ${raiz}/QtNetwork/* ${raiz}/QtDBus/* ${raiz}/QtSql/*
                ${raiz}/QtConcurrent/* ${raiz}/QtPrintSupport/* ${raiz}/QtXml/* ${raiz}/QtTest/*)
            list(APPEND nombres ${cabeceras})
        endforeach()
        set(raiz /usr/include)
        file(GLOB cabeceras RELATIVE ${raiz} ${raiz}/xcb/*.h ${raiz}/X11/*.h ${raiz}/X11/extensions/*.h
            ${raiz}/xkbcommon/*.h)
        list(APPEND nombres ${cabeceras})
        foreach(nombre ${nombres})
            file(WRITE ${carpeta}/${nombre} "#error \"<${nombre}> does not belong into this layer\"\n")
        endforeach()
        file(WRITE ${carpeta}/.hecho "")
    endif()
    target_include_directories(${objetivo} BEFORE PRIVATE ${carpeta})
endfunction()
