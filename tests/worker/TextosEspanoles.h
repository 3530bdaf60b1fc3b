// Running Spanish texts of every style, from dialogue to law: their words have 3.3 to 6.6 letters. To most of them the
// durations of the calibration were fitted; to the last five nothing was.
#pragma once

#include <array>
#include <string_view>

namespace ondalis {

struct TextoEspanol {
    const char *nombre;
    std::u16string_view texto;
};

inline constexpr std::array kTextosEspanoles{
    TextoEspanol{"noticia",
                 u"El Ministerio de Transportes presentó este miércoles el proyecto definitivo para la ampliación de "
                 u"la estación central, una infraestructura que recibirá financiación europea durante los próximos "
                 u"cuatro años. Según explicaron fuentes gubernamentales, las obras comenzarán previsiblemente en "
                 u"septiembre y obligarán a modificar temporalmente los recorridos de varias líneas metropolitanas. "
                 u"La oposición considera insuficiente el presupuesto y reclama una comisión independiente que "
                 u"supervise los contratos. Por su parte, las asociaciones de comerciantes temen que las molestias "
                 u"perjudiquen la actividad económica del barrio, especialmente durante la temporada navideña. El "
                 u"alcalde, que asistió a la presentación acompañado de representantes vecinales, aseguró que el "
                 u"ayuntamiento establecerá ayudas directas para los establecimientos afectados. Los técnicos "
                 u"calculan que la nueva terminal permitirá aumentar un treinta por ciento la capacidad actual y "
                 u"reducirá considerablemente los retrasos acumulados."},
    TextoEspanol{"ley",
                 u"Las personas interesadas deberán presentar la solicitud en el registro general, acompañada de la "
                 u"documentación acreditativa que se establece en el artículo siguiente. El plazo de presentación "
                 u"será de veinte días hábiles, contados a partir del día siguiente al de la publicación de esta "
                 u"resolución en el boletín oficial. Las solicitudes incompletas podrán subsanarse en un plazo máximo "
                 u"de diez días; transcurrido este plazo sin que se haya producido la subsanación, se entenderá que "
                 u"la persona solicitante desiste de su petición. La comisión de valoración, constituida por tres "
                 u"funcionarios designados por la dirección general competente, examinará las solicitudes conforme a "
                 u"los criterios recogidos en el anexo segundo y elevará la correspondiente propuesta de resolución. "
                 u"Contra la resolución definitiva, que pone fin a la vía administrativa, podrá interponerse recurso "
                 u"potestativo de reposición ante el mismo órgano que la hubiera dictado."},
    TextoEspanol{"ciencia",
                 u"La fotosíntesis es el proceso mediante el cual las plantas, las algas y algunas bacterias "
                 u"transforman la energía luminosa en energía química. Para ello utilizan dióxido de carbono, agua y "
                 u"diversos pigmentos, entre los que destaca la clorofila. El oxígeno que respiramos es, en realidad, "
                 u"un producto secundario de esas reacciones. Durante la fase luminosa, que tiene lugar en las "
                 u"membranas de los cloroplastos, la luz excita los electrones y desencadena una sucesión de "
                 u"transferencias que termina almacenando energía. En la fase oscura, esa energía se emplea para "
                 u"construir moléculas orgánicas a partir del carbono atmosférico. La temperatura, la humedad y la "
                 u"intensidad de la radiación influyen en la velocidad del proceso. Los primeros organismos "
                 u"fotosintéticos aparecieron hace más de tres mil millones de años y modificaron profundamente la "
                 u"composición de la atmósfera terrestre."},
    TextoEspanol{"dialogo",
                 u"—Oye, ¿tú sabes si hoy hay clase? —No sé, yo creo que sí. ¿Por qué lo dices? —Es que no he visto a "
                 u"nadie en la puerta. —Ya, pero aún es pronto. ¿Qué hora es? —Son las ocho y diez. —Pues entonces sí "
                 u"que es raro, a esta hora ya suele estar aquí la mitad. —¿Y si llamas a Ana? Ella vive al lado y lo "
                 u"sabe todo. —No lo coge, ya lo he probado dos veces. —Mira, ahí viene Luis con su hermano. ¡Luis! "
                 u"¿Tú sabes algo? —¿De qué? —De si hay clase o no. —Claro que no hay, hoy es fiesta. ¿No os lo han "
                 u"dicho? —A mí no. —A mí tampoco, vaya. —Pues nada, ya que estamos, ¿vamos a tomar algo? —Vale, pero "
                 u"pago yo, que ayer pagaste tú. —Eso me gusta más. Venga, que con este frío no se puede estar en la "
                 u"calle."},
    TextoEspanol{"cuento",
                 u"Había una vez un ratón que vivía solo en un agujero debajo de la escalera. Todas las noches salía "
                 u"a buscar comida, y todas las noches volvía con las manos vacías, porque en aquella casa nadie "
                 u"dejaba nada encima de la mesa. Una noche oyó un ruido muy raro. Era el gato, que lloraba en un "
                 u"rincón. El ratón tuvo miedo, pero tuvo más pena que miedo, y se acercó poco a poco. Le preguntó "
                 u"qué le pasaba. El gato le contó que también él tenía hambre, que los dueños se habían ido de viaje "
                 u"y que no le habían dejado ni un plato de leche. Entonces el ratón le enseñó un camino secreto que "
                 u"llevaba a la despensa de los vecinos. Comieron los dos hasta que no pudieron más. Desde aquel día "
                 u"fueron amigos, y el gato nunca volvió a correr detrás de ningún ratón."},
    TextoEspanol{"manual",
                 u"Antes de conectar el aparato, compruebe que la tensión de la red coincide con la indicada en la "
                 u"placa situada en la parte inferior. Coloque el equipo sobre una superficie plana y estable, lejos "
                 u"de fuentes de calor, y deje al menos diez centímetros libres a cada lado para que el aire circule "
                 u"correctamente. Pulse el botón de encendido durante dos segundos: el indicador parpadeará y, cuando "
                 u"termine el arranque, quedará encendido de color verde. Para configurar la conexión inalámbrica, "
                 u"abra el menú principal, seleccione la opción de ajustes y elija la red deseada. Introduzca la "
                 u"contraseña con el teclado de la pantalla y confirme. Si el dispositivo no encuentra ninguna red, "
                 u"acérquelo al encaminador y repita la operación. No utilice productos abrasivos para la limpieza; "
                 u"basta con un paño suave ligeramente humedecido."},
    TextoEspanol{"ensayo",
                 u"No es fácil decir en qué consiste la amistad, aunque todos creemos saberlo. Quien tiene un amigo "
                 u"no lo tiene como se tiene una cosa, y sin embargo siente que algo suyo anda por el mundo en otra "
                 u"persona. Los antiguos pensaban que solamente los buenos pueden ser amigos, porque los malos no "
                 u"buscan al otro, sino lo que el otro les da. Quizá exageraban. También los seres mediocres, que "
                 u"somos casi todos, conocemos ese descanso de no tener que fingir delante de alguien. La amistad no "
                 u"exige nada y lo espera todo; no lleva cuentas, pero recuerda. Cuando se rompe, no sabemos bien qué "
                 u"hemos perdido, y durante años seguimos hablando por dentro con quien ya no nos escucha. Tal vez "
                 u"por eso es más triste perder un amigo que perder un amor: el amor se declara y se termina, la "
                 u"amistad se apaga sin que nadie lo diga."},
    TextoEspanol{"deporte",
                 u"El equipo local ganó con claridad. Salió decidido, presionó arriba desde el primer minuto y "
                 u"encontró pronto su premio. A los nueve minutos, un centro desde la derecha acabó en la red tras un "
                 u"rebote. El rival reaccionó tarde. Tuvo una ocasión clara al borde del descanso, pero el portero "
                 u"respondió con una parada espectacular. En la segunda parte cambió el guion. Llovía con fuerza, el "
                 u"balón no corría y los centrocampistas perdieron precisión. El entrenador movió el banquillo, "
                 u"retrasó la defensa y buscó el contragolpe. Funcionó. En el minuto ochenta llegó la sentencia: robo "
                 u"en el centro del campo, pase al hueco y disparo cruzado. El público despidió a los jugadores en "
                 u"pie. Con esta victoria, la séptima consecutiva, el conjunto recupera el liderato y afronta con "
                 u"optimismo las últimas jornadas."},
    TextoEspanol{"carta",
                 u"Querida Marta: te escribo desde el tren, que va casi vacío y se para en todos los pueblos. Llevo "
                 u"tres horas mirando por la ventanilla y me acuerdo mucho de aquel viaje que hicimos juntas, cuando "
                 u"nos equivocamos de vía y acabamos en la costa sin dinero. ¡Qué risa nos daba todo! Ahora voy a ver "
                 u"a mis padres, que ya están mayores y no quieren salir de casa. Mi madre se cansa enseguida, y mi "
                 u"padre oye cada vez peor, aunque no lo reconoce. Les llevo un aparato de esos que leen en voz alta, "
                 u"a ver si les gusta. ¿Tú cómo estás? ¿Sigues con las clases de piano? Cuando vuelva, te llamo y "
                 u"quedamos una tarde para hablar con calma. Dale un beso a los niños y otro para ti."},
    TextoEspanol{"historia",
                 u"A mediados del siglo diecinueve, la ciudad seguía encerrada dentro de sus murallas medievales. La "
                 u"población había crecido rápidamente gracias a las fábricas textiles, y en los barrios antiguos se "
                 u"amontonaban familias enteras en habitaciones sin ventilación. Las epidemias de cólera se repetían "
                 u"cada pocos veranos. Finalmente, tras largas discusiones entre el ejército, propietario de los "
                 u"terrenos exteriores, y las autoridades municipales, se autorizó el derribo. Los ingenieros "
                 u"trazaron entonces una cuadrícula de calles anchas, con jardines interiores y esquinas achaflanadas "
                 u"que facilitaban el paso de los carruajes. El proyecto, criticado por los arquitectos de la época, "
                 u"que lo consideraban monótono, terminó convirtiéndose en un modelo estudiado en todo el mundo. "
                 u"Muchos de aquellos jardines, sin embargo, desaparecieron pronto: la especulación los llenó de "
                 u"almacenes y talleres."},
    TextoEspanol{"novela",
                 u"Cuando llegué a la casa ya era de noche. La puerta estaba abierta y no se veía a nadie. Llamé dos "
                 u"veces, y solo me contestó el perro, que salió del pasillo moviendo la cola como si me conociera de "
                 u"toda la vida. Dejé la maleta en el suelo y entré en la cocina. Sobre la mesa había un plato, un "
                 u"vaso y una carta con mi nombre. La leí de pie, a la luz de la vela. Decía que me esperaban desde "
                 u"hacía tres días, que no habían podido quedarse más y que la llave del desván estaba donde siempre. "
                 u"Pero yo no sabía dónde era siempre. Me senté, comí lo que había en el plato y me quedé mirando la "
                 u"lluvia que caía en el patio. Pensé en todas las veces que había soñado con volver, y en que nunca, "
                 u"en ninguno de aquellos sueños, la casa estaba vacía."},
    TextoEspanol{"salud",
                 u"Dormir mal de vez en cuando no es un problema; hacerlo durante semanas, sí. Los especialistas "
                 u"recomiendan acostarse siempre a la misma hora, cenar ligero y apagar las pantallas al menos media "
                 u"hora antes. El dormitorio debe estar fresco, oscuro y en silencio. Quien no consiga dormirse en "
                 u"veinte minutos hará bien en levantarse, leer algo tranquilo y volver a la cama cuando tenga sueño. "
                 u"El café y el té tardan hasta seis horas en desaparecer del organismo, de modo que conviene no "
                 u"tomarlos por la tarde. El ejercicio ayuda, pero no justo antes de acostarse. Si a pesar de todo "
                 u"las dificultades continúan, es preferible consultar con un médico que recurrir a pastillas por "
                 u"cuenta propia: muchas crean dependencia y, con el tiempo, empeoran el descanso."},
    TextoEspanol{"sucesos",
                 u"Dos personas resultaron heridas leves ayer por la tarde al incendiarse un autobús en la carretera "
                 u"que une la capital con el aeropuerto. El conductor advirtió el humo a tiempo, detuvo el vehículo "
                 u"en el arcén y ayudó a bajar a los cuarenta y tres viajeros. Cuando llegaron los bomberos, las "
                 u"llamas habían alcanzado el techo. La circulación permaneció cortada durante más de dos horas, lo "
                 u"que provocó retenciones de hasta nueve kilómetros. Un portavoz de la compañía declaró que el "
                 u"autobús había pasado la última revisión en marzo y que se ha abierto una investigación para "
                 u"aclarar las causas. Varios pasajeros perdieron el vuelo; la empresa se ha comprometido a "
                 u"indemnizarlos. «Pasamos mucho miedo, pero todo el mundo se portó muy bien», contaba una de las "
                 u"viajeras, todavía con la maleta en la mano."},
    TextoEspanol{"memoria",
                 u"De mi infancia recuerdo sobre todo los veranos. No había televisión en casa, y por las noches mi "
                 u"tía sacaba las sillas a la puerta y nos contaba cosas de cuando ella era joven. Yo me dormía en el "
                 u"suelo, con la cabeza sobre el perro. A veces pasaba el tren de las once, y todos callábamos hasta "
                 u"que dejaba de oírse. Mi tía decía siempre lo mismo: que algún día ella se iría en ese tren. Nunca "
                 u"se fue. Cuando vendimos la casa encontré, al fondo de un cajón, un billete sin usar, con la fecha "
                 u"de un día de agosto de hace muchos años. No se lo enseñé a nadie. Lo guardé en un libro, y ahora "
                 u"no sé en cuál, así que cada vez que abro uno de aquellos libros espero un poco antes de pasar la "
                 u"página."},
    TextoEspanol{"empresa",
                 u"Estimados clientes: a partir del próximo 1 de febrero, nuestras oficinas permanecerán abiertas de "
                 u"8.30 a 14.30 horas, de lunes a viernes. Además, los jueves atenderemos por la tarde con cita "
                 u"previa. Podrán realizar las gestiones habituales, como consultar facturas, modificar sus datos o "
                 u"comunicar averías, a través de la aplicación o en el teléfono gratuito. Les recordamos que las "
                 u"facturas electrónicas tienen la misma validez que las impresas y que pueden solicitarlas en "
                 u"cualquier momento. Los clientes mayores de 65 años y las personas con discapacidad seguirán "
                 u"disponiendo de atención preferente. Lamentamos las molestias que este cambio pueda ocasionarles y "
                 u"les agradecemos la confianza depositada en nosotros durante todos estos años."},
    TextoEspanol{"teatro",
                 u"—¿Se puede? —Pase, pase, está abierto. —Buenas tardes. Venía por lo del anuncio. —¿Qué anuncio? Yo "
                 u"no he puesto ninguno. —El del piano, señora. Aquí dice que lo regala. —¿Que lo regalo? ¡Mi hijo! "
                 u"Esto es cosa de mi hijo. Él no sabe tocar y piensa que los demás tampoco. —Perdone, entonces me "
                 u"voy. —No, espere. ¿Usted toca? —Un poco, de oído. —Pues siéntese y toque algo, que hace años que "
                 u"no lo oigo. Pero no muy alto, que los vecinos se quejan de todo. —¿Qué le gustaría? —Lo que usted "
                 u"quiera. Una cosa alegre, de las de antes. —Está algo desafinado. —También yo, hijo, también yo. Y "
                 u"aquí me tiene."},
};

// Of words so long, seven letters, that at a quick pace their number is not reached.
inline constexpr std::u16string_view kTextoDensoEspanol =
    u"El sistema operativo administra los recursos del ordenador y proporciona servicios comunes a las "
    u"aplicaciones. Su componente fundamental, denominado núcleo, controla la memoria, los procesadores "
    u"y los dispositivos de almacenamiento. Cuando varias aplicaciones se ejecutan simultáneamente, el "
    u"planificador distribuye el tiempo disponible mediante algoritmos que procuran equilibrar "
    u"rendimiento y respuesta. La memoria virtual permite utilizar direcciones independientes para cada "
    u"proceso, de manera que un programa defectuoso difícilmente compromete la estabilidad general. Los "
    u"sistemas de archivos organizan la información en directorios jerárquicos y registran permisos, "
    u"propietarios y fechas de modificación. Las interfaces gráficas contemporáneas incorporan, además, "
    u"funciones de accesibilidad: lectores de pantalla, ampliadores, teclados alternativos y "
    u"reconocimiento de voz.";

}  // namespace ondalis
