#include "app/help_languages.h"

namespace kavit {

std::string_view SpanishHelp() {
    return R"(KAVIT20

Kavit resuelve niveles de Sokoban. El hombre camina por las casillas libres y empuja las cajas de
una en una; nunca tira de ellas. El nivel queda resuelto cuando todas las cajas están sobre una
meta. La solución que busca Kavit tiene el menor número posible de empujes; también procura que los
movimientos del hombre sean pocos, pero no siempre son los mínimos.


TRES MANERAS DE INTRODUCIR UN NIVEL

- Leer un archivo: File / Open File abre un archivo de nivel (".xsb", un nivel por archivo).
También puede arrastrar el archivo hasta la ventana. Next Level y Previous Level recorren los demás
niveles de la misma carpeta.

- Importar: File / Import abre un área de texto. Pegue o escriba en ella el texto de un nivel y
pulse RETURN. Si el portapapeles contiene un nivel, Ctrl+V sobre el tablero lo toma directamente.

- Dibujarlo: File / Edit Board. Elija una de las figuras que hay a la derecha del tablero y haga
clic en las casillas; el suelo, las metas, las cajas y las paredes también se pintan arrastrando el
ratón. Los botones contiguos desplazan el nivel entero, lo centran, lo reflejan y lo giran. DONE
termina el dibujo y lo conserva; Escape devuelve el tablero tal como estaba antes; CLEAR lo vacía.


LOS CARACTERES DE UN NIVEL

Cada línea del texto es una fila y cada carácter, una casilla:

    ' '  suelo
    '.'  meta
    '@'  el hombre
    '$'  caja
    '*'  caja sobre una meta
    '+'  el hombre sobre una meta
    '#'  pared

El nivel ha de estar cerrado por paredes y tener un solo hombre y tantas cajas como metas. Puede
medir hasta 17 filas de alto y 19 columnas de ancho. Las líneas que empiezan por cualquier otro
carácter, como un título, se pasan por alto.


RESOLVER

- SOLVE inicia la búsqueda. El reloj indica los segundos transcurridos y el límite, y la barra, lo
llena que está la memoria.

- STOP, en el mismo botón, termina la búsqueda. Si ya se conoce una solución, se conserva.

- Cuando hay solución, la línea de estado indica sus movimientos y empujes: 230/97 son 230
movimientos, de los cuales 97 son empujes. Si sigue otro par, la primera solución tiene menos
movimientos y la segunda, menos empujes. A continuación el programa pregunta dónde escribir el
archivo de la solución (".sol"); puede usted cancelar.

- TEXT muestra el nivel y la solución como texto. Las letras l, d, r, u son pasos a la izquierda,
hacia abajo, a la derecha y hacia arriba; las mayúsculas son empujes. Seleccione y copie lo que
quiera con Ctrl+C. La primera solución ya está en el portapapeles, lista para pegarla en otro
programa. RETURN vuelve al tablero.

- ANIM reproduce la primera solución en el tablero. STOP la detiene. En "CONT< >REPEAT", el botón
izquierdo del ratón continúa desde ese punto y el derecho empieza de nuevo. Al final, REPEAT la
muestra otra vez.


AJUSTES (Configure)

- Max Positions: cuántas posiciones puede recordar la búsqueda. Los niveles difíciles necesitan
más; la memoria se reserva de una vez, unos 100 MB para 4000000 de posiciones con 8 cajas.

- Blocks: el mayor número de cajas que puede tener un nivel. Si lo aumenta, cada posición ocupa
más.

- Max Time: los segundos tras los cuales se detiene una búsqueda.

- "Write solution Unconditionally" escribe el archivo de la solución sin preguntar, en la carpeta
actual y con el nombre del nivel. "Don't Write solution" no lo escribe nunca. Si no marca ninguna
de las dos, el programa pregunta.

APPLY pone en vigor los nuevos tamaños y CANCEL los descarta. File / Save Configuration guarda los
ajustes para la próxima vez, en el archivo Kavit.ini de la carpeta actual.


OPTIMIZADOR (Optimizer)

Determina cuánto trabajo se dedica a ahorrar movimientos del hombre; la letra que hay junto al
tablero lo indica.

- None (0), letra N: basta con la primera solución encontrada.

- Something (1), letra S: compara todas las soluciones que encuentra la búsqueda. Es el habitual.

- Something more (2), letra M: después de la búsqueda repasa las posiciones guardadas para reducir
los movimientos, incluso con hasta dos empujes más.

- Something plus (3), letra P: aún más a fondo, y más lento. Termina demostrando que ninguna solución
con el menor número de empujes tiene menos movimientos, si el tiempo y la memoria lo permiten.

Special, con los niveles 2 y 3, sigue más de las maneras en que pueden encontrarse las dos mitades
de una solución. None, Something plus y Special pertenecen a los menús para expertos, que al
principio están ocultos.


QUÉ SIGNIFICAN LOS MENSAJES

- "There is no solution !": se han probado todas las posibilidades; el nivel no tiene solución.

- "Out of memory before a solution": la búsqueda ha agotado Max Positions. Auméntelo en Configure,
vuelva con File / Restart y resuelva otra vez.

- "Out of memory but there is a solution": la memoria se agotó al reducir movimientos; la solución
es válida.

- "Time Out" e "Interrupted by user !": se alcanzó el límite de tiempo, o usted pulsó STOP.

- "Strange mapping ???": no hay tantas cajas como metas, no hay exactamente un hombre o las paredes
están abiertas.

- "This program is limited to  8 boxes": aumente Blocks en Configure.

- "There is, at least, one frozen block": una caja que no está sobre una meta ya no podrá moverse.

- "Problem already solved": todas las cajas están sobre una meta desde el principio.

- "Insuficient Memory": el ordenador no dispone de tanta memoria; elija menos posiciones o menos
cajas.


TECLAS

    Ctrl+O: abrir un archivo de nivel
    Ctrl+AvPág: nivel siguiente
    Ctrl+RePág: nivel anterior
    Ctrl+R: volver al inicio del nivel
    F5: SOLVE, STOP, TEXT, RETURN
    F6: ANIM y lo que muestre ese botón
    Mayús+F6: repetir todo desde el principio
    Escape: detener; salir de lo que esté abierto
    Ctrl+C: copiar la solución
    Ctrl+Mayús+C: copiar el nivel como texto
    Ctrl+V: pegar un nivel
    Ctrl+E: editar el tablero
    Ctrl+I: importar
    Ctrl+S: guardar los ajustes
    F1: ayuda en inglés
    Ctrl+Q: salir
)";
}

}  // namespace kavit
