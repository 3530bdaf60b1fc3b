// A window with one of each fault that the accessibility checks must find: a box without a name, two buttons of one
// name, a button that the keyboard never reaches. Without argument; with "sana" the same window without them.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

int main(int argc, char **argv) {
    const bool sana = argc > 1 && qstrcmp(argv[1], "sana") == 0;
    QApplication aplicacion(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ventana-muda"));
    QWidget ventana;
    ventana.setWindowTitle(QStringLiteral("Ventana de prueba"));
    auto *columna = new QVBoxLayout(&ventana);
    auto *caja = new QLineEdit;
    auto *primero = new QPushButton(QStringLiteral("Abrir"));
    auto *segundo = new QPushButton(QStringLiteral("Abrir"));
    auto *raton = new QPushButton(QStringLiteral("Sólo con el ratón"));
    if (sana) {
        caja->setAccessibleName(QStringLiteral("Nombre"));
        segundo->setAccessibleName(QStringLiteral("Abrir otra vez"));
    } else {
        raton->setFocusPolicy(Qt::ClickFocus);
    }
    for (QWidget *uno : {static_cast<QWidget *>(caja), static_cast<QWidget *>(primero), static_cast<QWidget *>(segundo),
                         static_cast<QWidget *>(raton)})
        columna->addWidget(uno);
    ventana.show();
    return QApplication::exec();
}
