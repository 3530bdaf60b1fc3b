// A window of another program with an ordinary field and one that hides what is typed, for the scenarios of typed keys.
// Tab goes from one to the other; the password field has the focus at first.
#include <QApplication>
#include <QLineEdit>
#include <QVBoxLayout>

int main(int argc, char **argv) {
    QApplication aplicacion(argc, argv);
    QWidget ventana;
    ventana.setWindowTitle(QStringLiteral("Campos"));
    QVBoxLayout columna(&ventana);
    QLineEdit secreto, corriente;
    secreto.setEchoMode(QLineEdit::Password);
    columna.addWidget(&secreto);
    columna.addWidget(&corriente);
    ventana.show();
    secreto.setFocus();
    return QApplication::exec();
}
