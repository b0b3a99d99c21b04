#include "app/help_languages.h"

namespace kavit {

std::string_view FrenchHelp() {
    return R"(KAVIT20

Kavit résout des niveaux de Sokoban. L'homme marche sur les cases libres et pousse les caisses, une
à la fois ; il ne tire jamais. Le niveau est résolu quand toutes les caisses sont sur un but. La
solution que cherche Kavit compte le moins de poussées possible ; les déplacements de l'homme sont
eux aussi réduits, mais leur nombre n'est pas toujours le plus petit.


TROIS FAÇONS D'ENTRER UN NIVEAU

- Lire un fichier : File / Open File ouvre un fichier de niveau (« .xsb », un niveau par fichier).
Vous pouvez aussi déposer le fichier sur la fenêtre. Next Level et Previous Level parcourent les
autres niveaux du même dossier.

- Importer : File / Import ouvre une zone de texte. Collez-y ou tapez-y le texte d'un niveau, puis
appuyez sur RETURN. Si le presse-papiers contient un niveau, Ctrl+V sur le plateau le prend
directement.

- Le dessiner : File / Edit Board. Choisissez une des figures à droite du plateau et cliquez sur les
cases ; le sol, les buts, les caisses et les murs se peignent aussi en faisant glisser la souris.
Les boutons voisins déplacent tout le niveau, le centrent, le retournent en miroir et le font
tourner. DONE termine le dessin et le garde ; Échap rend le plateau tel qu'il était avant ; CLEAR
le vide.


LES CARACTÈRES D'UN NIVEAU

Chaque ligne du texte est une rangée et chaque caractère une case :

    ' '  sol
    '.'  but
    '@'  l'homme
    '$'  caisse
    '*'  caisse sur un but
    '+'  l'homme sur un but
    '#'  mur

Un niveau doit être fermé par des murs et avoir un seul homme et autant de caisses que de buts. Il
peut mesurer jusqu'à 17 rangées de haut et 19 colonnes de large. Une ligne qui commence par tout
autre caractère, comme un titre, est ignorée.


RÉSOUDRE

- SOLVE lance la recherche. L'horloge indique les secondes écoulées et la limite, et la barre
montre à quel point la mémoire est remplie.

- STOP, sur le même bouton, arrête la recherche. Si une solution est déjà connue, elle est
conservée.

- Quand il y a une solution, la ligne d'état en donne les déplacements et les poussées : 230/97, ce
sont 230 déplacements dont 97 poussées. Si un second couple suit, la première solution a moins de
déplacements et la seconde moins de poussées. Le programme demande ensuite où écrire le fichier de
solution (« .sol ») ; vous pouvez annuler.

- TEXT montre le niveau et la solution sous forme de texte. Les lettres l, d, r, u sont des pas à
gauche, en bas, à droite et en haut ; les majuscules sont des poussées. Sélectionnez et copiez ce
que vous voulez avec Ctrl+C. La première solution est déjà dans le presse-papiers, prête à être
collée dans un autre programme. RETURN revient au plateau.

- ANIM rejoue la première solution sur le plateau. STOP l'arrête. Sur « CONT< >REPEAT », le bouton
gauche de la souris continue à partir de là et le bouton droit reprend au début. À la fin, REPEAT la
montre encore une fois.


RÉGLAGES (Configure)

- Max Positions : le nombre de positions que la recherche peut retenir. Les niveaux difficiles en
demandent davantage ; la mémoire est réservée d'un seul coup, environ 100 Mo pour 4000000 de
positions avec 8 caisses.

- Blocks : le plus grand nombre de caisses qu'un niveau peut avoir. L'augmenter rend chaque position
plus volumineuse.

- Max Time : le nombre de secondes après lequel une recherche est arrêtée.

- « Write solution Unconditionally » écrit le fichier de solution sans rien demander, dans le
dossier courant et sous le nom du niveau. « Don't Write solution » ne l'écrit jamais. Sans l'un ni
l'autre, le programme vous le demande.

APPLY applique les nouvelles tailles et CANCEL les oublie. File / Save Configuration garde les
réglages pour la prochaine fois, dans le fichier Kavit.ini du dossier courant.


OPTIMISEUR (Optimizer)

Il fixe le travail consacré à économiser les déplacements de l'homme ; la lettre à côté du plateau
l'indique.

- None (0), lettre N : la première solution trouvée suffit.

- Something (1), lettre S : compare toutes les solutions que rencontre la recherche. C'est le choix
habituel.

- Something more (2), lettre M : après la recherche, reprend les positions enregistrées pour réduire
les déplacements, même avec une ou deux poussées de plus.

- Something plus (3), lettre P : encore plus approfondi, et plus lent. Il finit par prouver qu'aucune
solution ayant le moins de poussées ne compte moins de déplacements, si le temps et la mémoire le
permettent.

Special, avec les niveaux 2 et 3, suit davantage de façons dont les deux moitiés d'une solution
peuvent se rejoindre. None, Something plus et Special font partie des menus pour experts, cachés au
départ.


CE QUE DISENT LES MESSAGES

- « There is no solution ! » : toutes les possibilités ont été essayées ; le niveau n'a pas de
solution.

- « Out of memory before a solution » : la recherche a épuisé Max Positions. Augmentez-le dans
Configure, revenez avec File / Restart et relancez la résolution.

- « Out of memory but there is a solution » : la mémoire a manqué pendant la réduction des
déplacements ; la solution est bonne.

- « Time Out » et « Interrupted by user ! » : la limite de temps est atteinte, ou vous avez appuyé
sur STOP.

- « Strange mapping ??? » : il n'y a pas autant de caisses que de buts, il n'y a pas exactement un
homme, ou les murs sont ouverts.

- « This program is limited to  8 boxes » : augmentez Blocks dans Configure.

- « There is, at least, one frozen block » : une caisse hors d'un but ne pourra plus jamais bouger.

- « Problem already solved » : toutes les caisses sont sur un but dès le départ.

- « Insuficient Memory » : l'ordinateur n'a pas assez de mémoire ; choisissez moins de positions ou
de caisses.


TOUCHES

    Ctrl+O : ouvrir un fichier de niveau
    Ctrl+Pg.suiv : niveau suivant
    Ctrl+Pg.préc : niveau précédent
    Ctrl+R : reprendre le niveau au début
    F5 : SOLVE, STOP, TEXT, RETURN
    F6 : ANIM et ce qu'affiche ce bouton
    Maj+F6 : tout rejouer depuis le début
    Échap : arrêter ; quitter ce qui est ouvert
    Ctrl+C : copier la solution
    Ctrl+Maj+C : copier le niveau sous forme de texte
    Ctrl+V : coller un niveau
    Ctrl+E : éditer le plateau
    Ctrl+I : importer
    Ctrl+S : enregistrer les réglages
    F1 : aide en anglais
    Ctrl+Q : quitter
)";
}

}  // namespace kavit
