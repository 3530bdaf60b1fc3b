#include "platform/atspi/cFocoAccesible.h"

#include "platform/atspi/cVigiaFoco.h"

namespace ondalis {

cFocoAccesible::~cFocoAccesible() {
    m_hilo.quit();
    m_hilo.wait();  // at most the limits of the calls under way
}

void cFocoAccesible::Inicia() {
    if (!m_vigia) {
        m_vigia = new cVigiaFoco;
        m_vigia->moveToThread(&m_hilo);
        connect(&m_hilo, &QThread::finished, m_vigia, &QObject::deleteLater);
        connect(m_vigia, &cVigiaFoco::Pregunta, this, [this](int proceso) {
            if (m_pregunta) m_pregunta(proceso);
        });
        connect(m_vigia, &cVigiaFoco::Respuesta, this, [this](int proceso, int rol) {
            if (m_respuesta) m_respuesta(proceso, static_cast<Rol>(rol));
        });
        connect(m_vigia, &cVigiaFoco::Conectado, this, [this](bool conectado) {
            m_conectado = conectado;
            if (!conectado && !m_anotado)
                m_log.Escribe(QStringLiteral("cFocoAccesible.Inicia: "),
                              QStringLiteral("El servicio de accesibilidad no responde: no se sabe qué campos son de "
                                             "contraseña"));
            m_anotado = !conectado;
        });
        m_hilo.setObjectName(QStringLiteral("foco"));
        m_hilo.start();
    }
    QMetaObject::invokeMethod(m_vigia, &cVigiaFoco::Inicia);
}

void cFocoAccesible::Termina() {
    if (m_vigia) QMetaObject::invokeMethod(m_vigia, &cVigiaFoco::Termina);
}

}  // namespace ondalis
