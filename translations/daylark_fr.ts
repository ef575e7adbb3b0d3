<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Daylark</name>
    <message>
        <source>
Blue strip: frames that are ready</source>
        <translation>
Bande bleue : images prêtes</translation>
    </message>
    <message>
        <source> and </source>
        <translation> et </translation>
    </message>
    <message>
        <source> frames</source>
        <translation> images</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> Mo</translation>
    </message>
    <message>
        <source> pixels</source>
        <translation> pixels</translation>
    </message>
    <message>
        <source> · %1 more</source>
        <translation> · %1 de plus</translation>
    </message>
    <message>
        <source>#1 to #%1</source>
        <translation>nº 1 à nº %1</translation>
    </message>
    <message>
        <source>%1 "%2" is not written: %3</source>
        <translation>%1 « %2 » n'est pas écrit : %3</translation>
    </message>
    <message>
        <source>%1 %2 of %3</source>
        <translation>%1 %2 sur %3</translation>
    </message>
    <message>
        <source>%1 and %2 more: %3</source>
        <translation>%1 et %2 de plus : %3</translation>
    </message>
    <message>
        <source>%1 cannot be made</source>
        <translation>%1 ne peut être créé</translation>
    </message>
    <message>
        <source>%1 channels</source>
        <translation>%1 canaux</translation>
    </message>
    <message>
        <source>%1 files looked at</source>
        <translation>%1 fichiers examinés</translation>
    </message>
    <message>
        <source>%1 flags changed</source>
        <translation>%1 drapeaux modifiés</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 i/s</translation>
    </message>
    <message>
        <source>%1 frames a second</source>
        <translation>%1 images par seconde</translation>
    </message>
    <message>
        <source>%1 grades replaced</source>
        <translation>%1 étalonnages remplacés</translation>
    </message>
    <message>
        <source>%1 is the key of %2.</source>
        <translation>%1 est la touche de %2.</translation>
    </message>
    <message>
        <source>%1 is there %2 times. Linked to %3, not to %4</source>
        <translation>%1 existe %2 fois. Relié à %3, pas à %4</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 éléments</translation>
    </message>
    <message>
        <source>%1 missing</source>
        <translation>%1 manquants</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 de plus</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>%1 of %2 Items</source>
        <translation>%1 de %2 éléments</translation>
    </message>
    <message>
        <source>%1 pictures were left out: notes hold text</source>
        <translation>%1 images omises : les notes sont du texte</translation>
    </message>
    <message>
        <source>%1 playlists: %2</source>
        <translation>%1 playlists : %2</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 choisis</translation>
    </message>
    <message>
        <source>%1 tracks: %2</source>
        <translation>%1 pistes : %2</translation>
    </message>
    <message>
        <source>%1, number</source>
        <translation>%1, nombre</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1 : %2</translation>
    </message>
    <message>
        <source>%1: trimming is off</source>
        <translation>%1 : rognage désactivé</translation>
    </message>
    <message>
        <source>%n left out, not named in UTF-8: %1</source>
        <translation>%n omis, noms hors UTF-8 : %1</translation>
    </message>
    <message>
        <source>%n found</source>
        <translation>%n trouvés</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>1 channel</source>
        <translation>1 canal</translation>
    </message>
    <message>
        <source>1 item</source>
        <translation>1 élément</translation>
    </message>
    <message>
        <source>1 to %1, a timecode, +8, -8</source>
        <translation>1 à %1, un timecode, +8, -8</translation>
    </message>
    <message>
        <source>1001</source>
        <translation>1001</translation>
    </message>
    <message>
        <source>1:1 (Actual Size)</source>
        <translation>1:1 (taille réelle)</translation>
    </message>
    <message>
        <source>1:1 Pixels (Actual Size)</source>
        <translation>Pixels 1:1 (taille réelle)</translation>
    </message>
    <message>
        <source>1:2 (Half Size)</source>
        <translation>1:2 (demi-taille)</translation>
    </message>
    <message>
        <source>1:3 (Third Size)</source>
        <translation>1:3 (un tiers)</translation>
    </message>
    <message>
        <source>A number is the production's where the movie has its own, else counted from 1. "#" before it counts from 1 in any case.</source>
        <translation>Un nombre est celui de la production si le film en a, sinon compté à partir de 1. Précédé de « # », il l’est toujours.</translation>
    </message>
    <message>
        <source>A picture was left out: notes hold text</source>
        <translation>Une image est omise : les notes sont du texte</translation>
    </message>
    <message>
        <source>A second copy, with a session of its own</source>
        <translation>Un second Daylark, avec sa propre session</translation>
    </message>
    <message>
        <source>&amp;About Daylark</source>
        <translation>À &amp;propos de Daylark</translation>
    </message>
    <message>
        <source>About Daylark</source>
        <translation>À propos de Daylark</translation>
    </message>
    <message>
        <source>active</source>
        <translation>actif</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Add %1 Items</source>
        <translation>Ajouter %1 éléments</translation>
    </message>
    <message>
        <source>&amp;Add Bookmark</source>
        <translation>&amp;Ajouter un repère</translation>
    </message>
    <message>
        <source>Add Bookmark</source>
        <translation>Ajouter un repère</translation>
    </message>
    <message>
        <source>Add Bookmarks</source>
        <translation>Ajouter des repères</translation>
    </message>
    <message>
        <source>Add Bundle</source>
        <translation>Ajouter un paquet</translation>
    </message>
    <message>
        <source>Add Daylark Mo&amp;vie...</source>
        <translation>Ajouter un clip Dayl&amp;ark...</translation>
    </message>
    <message>
        <source>Add Daylark Movies</source>
        <translation>Ajouter des clips Daylark</translation>
    </message>
    <message>
        <source>Add Divider</source>
        <translation>Ajouter un séparateur</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ajouter le dossier</translation>
    </message>
    <message>
        <source>Add Folder List</source>
        <translation>Ajouter une liste de dossier</translation>
    </message>
    <message>
        <source>Add F&amp;older...</source>
        <translation>Ajouter un d&amp;ossier...</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Ajouter un élément</translation>
    </message>
    <message>
        <source>&amp;Add Key…</source>
        <translation>&amp;Ajouter…</translation>
    </message>
    <message>
        <source>Add Media</source>
        <translation>Ajouter des médias</translation>
    </message>
    <message>
        <source>&amp;Add Media...</source>
        <translation>&amp;Ajouter des médias...</translation>
    </message>
    <message>
        <source>Add Playlist</source>
        <translation>Ajouter une playlist</translation>
    </message>
    <message>
        <source>Add Session</source>
        <translation>Ajouter une session</translation>
    </message>
    <message>
        <source>Add Smartlist</source>
        <translation>Ajouter une smartlist</translation>
    </message>
    <message>
        <source>Add To Playlist</source>
        <translation>Ajouter à la playlist</translation>
    </message>
    <message>
        <source>Add To Session</source>
        <translation>Ajouter à la session</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Ajouté</translation>
    </message>
    <message>
        <source>Added: %1</source>
        <translation>Ajouté : %1</translation>
    </message>
    <message>
        <source>Adding Media Files...</source>
        <translation>Ajout des médias...</translation>
    </message>
    <message>
        <source>after</source>
        <translation>après</translation>
    </message>
    <message>
        <source>After every look at the files, under this folder</source>
        <translation>Après chaque examen des fichiers, dans ce dossier</translation>
    </message>
    <message>
        <source>all</source>
        <translation>toutes</translation>
    </message>
    <message>
        <source>All Files</source>
        <translation>Tous les fichiers</translation>
    </message>
    <message>
        <source>All files are missing</source>
        <translation>Tous les fichiers manquent</translation>
    </message>
    <message>
        <source>All Files Found</source>
        <translation>Tous les fichiers trouvés</translation>
    </message>
    <message>
        <source>All Playlists</source>
        <translation>Toutes les playlists</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>Toujours</translation>
    </message>
    <message>
        <source>An invalid URL was passed to Daylark</source>
        <translation>Daylark a reçu une adresse invalide</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>et %1 de plus</translation>
    </message>
    <message>
        <source>and 1 more</source>
        <translation>et 1 de plus</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>et d'autres</translation>
    </message>
    <message>
        <source>Another copy of Daylark is at work (on %1): this one keeps a session of its own</source>
        <translation>Un autre Daylark travaille (sur %1) : celui-ci a sa propre session</translation>
    </message>
    <message>
        <source>Another number</source>
        <translation>Un autre numéro</translation>
    </message>
    <message>
        <source>Another rule</source>
        <translation>Une autre règle</translation>
    </message>
    <message>
        <source>any</source>
        <translation>une</translation>
    </message>
    <message>
        <source>Any Flag</source>
        <translation>Avec drapeau</translation>
    </message>
    <message>
        <source>are not there</source>
        <translation>n'existent pas</translation>
    </message>
    <message>
        <source>are there</source>
        <translation>existent</translation>
    </message>
    <message>
        <source>As a list</source>
        <translation>En liste</translation>
    </message>
    <message>
        <source>As I left it</source>
        <translation>Comme laissé</translation>
    </message>
    <message>
        <source>As &amp;List</source>
        <translation>En &amp;liste</translation>
    </message>
    <message>
        <source>As the file says</source>
        <translation>Comme dit le fichier</translation>
    </message>
    <message>
        <source>As the file says: %1</source>
        <translation>Comme dit le fichier : %1</translation>
    </message>
    <message>
        <source>As &amp;Tiles</source>
        <translation>En &amp;mosaïque</translation>
    </message>
    <message>
        <source>As tiles</source>
        <translation>En mosaïque</translation>
    </message>
    <message>
        <source>At every start</source>
        <translation>À chaque démarrage</translation>
    </message>
    <message>
        <source>At first: %1</source>
        <translation>Au début : %1</translation>
    </message>
    <message>
        <source>At first: no key</source>
        <translation>Au début : aucune</translation>
    </message>
    <message>
        <source>A&amp;udio</source>
        <translation>A&amp;udio</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatique</translation>
    </message>
    <message>
        <source>Back to %1</source>
        <translation>Revenir à %1</translation>
    </message>
    <message>
        <source>&amp;Bake Current Sort Order</source>
        <translation>&amp;Fixer l'ordre actuel</translation>
    </message>
    <message>
        <source>before</source>
        <translation>avant</translation>
    </message>
    <message>
        <source>begins with</source>
        <translation>commence par</translation>
    </message>
    <message>
        <source>Behind</source>
        <translation>Derrière</translation>
    </message>
    <message>
        <source>Behind drawings</source>
        <translation>Derrière les dessins</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Noir</translation>
    </message>
    <message>
        <source>Black and White Point</source>
        <translation>Points noir et blanc</translation>
    </message>
    <message>
        <source>Black and White Point…</source>
        <translation>Points noir et blanc…</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Bleu</translation>
    </message>
    <message>
        <source>BMs</source>
        <translation>Repères</translation>
    </message>
    <message>
        <source>Bold (Ctrl+B)</source>
        <translation>Gras (Ctrl+B)</translation>
    </message>
    <message>
        <source>Bookmark from &amp;Range</source>
        <translation>Repère d'après la &amp;plage</translation>
    </message>
    <message>
        <source>Bookmark from Range</source>
        <translation>Repère d'après la plage</translation>
    </message>
    <message>
        <source>Bookmark In</source>
        <translation>Entrée du repère</translation>
    </message>
    <message>
        <source>Bookmark Length</source>
        <translation>Durée du repère</translation>
    </message>
    <message>
        <source>Bookmark Note</source>
        <translation>Note du repère</translation>
    </message>
    <message>
        <source>Bookmark Out</source>
        <translation>Sortie du repère</translation>
    </message>
    <message>
        <source>Bookmark Text</source>
        <translation>Texte du repère</translation>
    </message>
    <message>
        <source>Bookmark Te&amp;xt on Picture</source>
        <translation>Te&amp;xte des repères sur l'image</translation>
    </message>
    <message>
        <source>Bookmark texts</source>
        <translation>Textes des repères</translation>
    </message>
    <message>
        <source>&amp;Bookmarks</source>
        <translation>&amp;Repères</translation>
    </message>
    <message>
        <source>Bookmarks</source>
        <translation>Repères</translation>
    </message>
    <message>
        <source>Bookmarks and drawings</source>
        <translation>Repères et dessins</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Luminosité</translation>
    </message>
    <message>
        <source>&amp;Bring Viewer Forward</source>
        <translation>Visionneuse au premier pla&amp;n</translation>
    </message>
    <message>
        <source>Brush colour</source>
        <translation>Couleur du pinceau</translation>
    </message>
    <message>
        <source>By the production's numbers</source>
        <translation>Selon les numéros de la production</translation>
    </message>
    <message>
        <source>Cache     %1 of %2 MiB</source>
        <translation>Cache     %1 sur %2 Mio</translation>
    </message>
    <message>
        <source>Came by a link</source>
        <translation>Venu par un lien</translation>
    </message>
    <message>
        <source>Can't resolve link</source>
        <translation>Lien impossible à résoudre</translation>
    </message>
    <message>
        <source>Can't resolve linked files</source>
        <translation>Fichiers du lien introuvables</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Cancel the job</source>
        <translation>Annuler la tâche</translation>
    </message>
    <message>
        <source>CCs</source>
        <translation>Étal.</translation>
    </message>
    <message>
        <source>Chan&amp;ge Key…</source>
        <translation>Chan&amp;ger…</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Modifications</translation>
    </message>
    <message>
        <source>Changes are not stored</source>
        <translation>Modifications non enregistrées</translation>
    </message>
    <message>
        <source>Changes are not stored: %1</source>
        <translation>Modifications non enregistrées : %1</translation>
    </message>
    <message>
        <source>Choose another value</source>
        <translation>Choisissez une autre valeur</translation>
    </message>
    <message>
        <source>Choose Folder</source>
        <translation>Choisir un dossier</translation>
    </message>
    <message>
        <source>Choose Folder of Automatic Sear&amp;ches...</source>
        <translation>&amp;Dossier de la recherche automatique...</translation>
    </message>
    <message>
        <source>Choose Folder To Display</source>
        <translation>Choisir le dossier à montrer</translation>
    </message>
    <message>
        <source>Choose Folders To Add</source>
        <translation>Choisir les dossiers à ajouter</translation>
    </message>
    <message>
        <source>Choose Media Files To Add</source>
        <translation>Choisir les médias à ajouter</translation>
    </message>
    <message>
        <source>Choose the folder of automatic searches</source>
        <translation>Choisir le dossier des recherches automatiques</translation>
    </message>
    <message>
        <source>Choose The Root Folder For Automatic Searches</source>
        <translation>Choisir le dossier des recherches automatiques</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Choisir...</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>&amp;Clear Recent Sessions</source>
        <translation>&amp;Effacer la liste</translation>
    </message>
    <message>
        <source>&amp;Clear Session</source>
        <translation>&amp;Vider la session</translation>
    </message>
    <message>
        <source>Clear Session</source>
        <translation>Vider la session</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Clic</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>Fermer (Échap)</translation>
    </message>
    <message>
        <source>Close the find panel</source>
        <translation>Fermer la recherche</translation>
    </message>
    <message>
        <source>&amp;Close Viewer</source>
        <translation>&amp;Fermer la visionneuse</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Couleur</translation>
    </message>
    <message>
        <source>Colour Configuration</source>
        <translation>Configuration des couleurs</translation>
    </message>
    <message>
        <source>Colour configurations</source>
        <translation>Configurations de couleurs</translation>
    </message>
    <message>
        <source>&amp;Colour Correction</source>
        <translation>&amp;Correction des couleurs</translation>
    </message>
    <message>
        <source>Colour Correction</source>
        <translation>Correction des couleurs</translation>
    </message>
    <message>
        <source>Colour correction</source>
        <translation>Étalonnage</translation>
    </message>
    <message>
        <source>Colour &amp;Management</source>
        <translation>&amp;Gestion des couleurs</translation>
    </message>
    <message>
        <source>Colour Management</source>
        <translation>Gestion des couleurs</translation>
    </message>
    <message>
        <source>Colour of the Brush</source>
        <translation>Couleur du pinceau</translation>
    </message>
    <message>
        <source>Colour of the brush</source>
        <translation>Couleur du pinceau</translation>
    </message>
    <message>
        <source>Colour of the brush…</source>
        <translation>Couleur du pinceau…</translation>
    </message>
    <message>
        <source>Colour of the texts over the picture…</source>
        <translation>Couleur des textes sur l'image…</translation>
    </message>
    <message>
        <source>Colour tags</source>
        <translation>Couleurs déclarées</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Colonnes</translation>
    </message>
    <message>
        <source>Combine All Playlists</source>
        <translation>Fusionner toutes les playlists</translation>
    </message>
    <message>
        <source>Combine Playlists</source>
        <translation>Fusionner les playlists</translation>
    </message>
    <message>
        <source>Combine Selected Playlists</source>
        <translation>Fusionner les playlists choisies</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Commands and their keys</source>
        <translation>Commandes et leurs touches</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>Constrain Viewer To Movie Proportions</source>
        <translation>Garder les proportions du clip</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>contient</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contraste</translation>
    </message>
    <message>
        <source>Controls</source>
        <translation>Commandes</translation>
    </message>
    <message>
        <source>Controls at the lower edge</source>
        <translation>Commandes au bord inférieur</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Copy All Bookmarks</source>
        <translation>Copier tous les repères</translation>
    </message>
    <message>
        <source>Copy Bookmarks</source>
        <translation>Copier les repères</translation>
    </message>
    <message>
        <source>Copy Complete</source>
        <translation>Copie terminée</translation>
    </message>
    <message>
        <source>Copy &amp;Filename</source>
        <translation>Copier le &amp;nom</translation>
    </message>
    <message>
        <source>C&amp;opy Grade</source>
        <translation>C&amp;opier l'étalonnage</translation>
    </message>
    <message>
        <source>Copy Media</source>
        <translation>Copier les médias</translation>
    </message>
    <message>
        <source>Copy Media To New Destination</source>
        <translation>Copier les médias ailleurs</translation>
    </message>
    <message>
        <source>Copy Movie &amp;Link</source>
        <translation>Copier le &amp;lien du clip</translation>
    </message>
    <message>
        <source>&amp;Copy Path</source>
        <translation>&amp;Copier le chemin</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>Copier le &amp;chemin</translation>
    </message>
    <message>
        <source>Copy Playlist Lin&amp;k</source>
        <translation>Copier le lien de playlist (&amp;k)</translation>
    </message>
    <message>
        <source>Copy &amp;Timecode</source>
        <translation>Copier le &amp;timecode</translation>
    </message>
    <message>
        <source>Copy Unmuted Bookmarks</source>
        <translation>Copier les repères actifs</translation>
    </message>
    <message>
        <source>Counter starts at</source>
        <translation>Le compteur part de</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Créé</translation>
    </message>
    <message>
        <source>Creating Thumbnails...</source>
        <translation>Création des vignettes...</translation>
    </message>
    <message>
        <source>Ctrl+Wheel</source>
        <translation>Ctrl+molette</translation>
    </message>
    <message>
        <source>Current Frame</source>
        <translation>Image actuelle</translation>
    </message>
    <message>
        <source>Daylark movie</source>
        <translation>Clip Daylark</translation>
    </message>
    <message>
        <source>Daylark's own</source>
        <translation>Celle de Daylark</translation>
    </message>
    <message>
        <source>Decoder   %1</source>
        <translation>Décodeur  %1</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Par défaut</translation>
    </message>
    <message>
        <source>Default head handle</source>
        <translation>Tête par défaut</translation>
    </message>
    <message>
        <source>Default tail handle</source>
        <translation>Fin par défaut</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Dim what all names of a list begin with</source>
        <translation>Estomper le début commun des noms</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Écran</translation>
    </message>
    <message>
        <source>&amp;Display</source>
        <translation>&amp;Écran</translation>
    </message>
    <message>
        <source>Display, 8 bit</source>
        <translation>Écran, 8 bits</translation>
    </message>
    <message>
        <source>Display: %1</source>
        <translation>Écran : %1</translation>
    </message>
    <message>
        <source>&amp;Dock Panels</source>
        <translation>&amp;Ancrer les panneaux</translation>
    </message>
    <message>
        <source>Dock panels that would cover the picture, when all are shown</source>
        <translation>Ancrer les panneaux qui couvriraient l'image</translation>
    </message>
    <message>
        <source>does not contain</source>
        <translation>ne contient pas</translation>
    </message>
    <message>
        <source>Double-click resets %1</source>
        <translation>Double-clic réinitialise %1</translation>
    </message>
    <message>
        <source>Draw with the brush (T changes)</source>
        <translation>Dessiner au pinceau (T alterne)</translation>
    </message>
    <message>
        <source>&amp;Drawing</source>
        <translation>&amp;Dessin</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Dessin</translation>
    </message>
    <message>
        <source>Drawing Tool &amp;On or Off</source>
        <translation>&amp;Outil actif ou non</translation>
    </message>
    <message>
        <source>&amp;Drawing Tools</source>
        <translation>Outils de &amp;dessin</translation>
    </message>
    <message>
        <source>Drawing Tools</source>
        <translation>Outils de dessin</translation>
    </message>
    <message>
        <source>Drawings</source>
        <translation>Dessins</translation>
    </message>
    <message>
        <source>Drawings will also be removed</source>
        <translation>Les dessins seront aussi retirés</translation>
    </message>
    <message>
        <source>Drop folders here,
each becomes a playlist</source>
        <translation>Déposez des dossiers ici :
chacun devient une playlist</translation>
    </message>
    <message>
        <source>Drop movies or folders here</source>
        <translation>Déposez ici clips ou dossiers</translation>
    </message>
    <message>
        <source>Dropped   %1 of %2</source>
        <translation>Perdues   %1 sur %2</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Durée</translation>
    </message>
    <message>
        <source>Duration in all</source>
        <translation>Durée totale</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;Edit Bookmark Text</source>
        <translation>Modifi&amp;er le texte</translation>
    </message>
    <message>
        <source>Elapsed time</source>
        <translation>Temps écoulé</translation>
    </message>
    <message>
        <source>Else always as a question; what is typed or marked is always answered</source>
        <translation>Sinon toujours une question ; à ce qui est tapé ou marqué, on répond toujours</translation>
    </message>
    <message>
        <source>Empty: by its pictures, else as below</source>
        <translation>Vide : d'après les images, sinon comme ci-dessous</translation>
    </message>
    <message>
        <source>Erase from the drawing</source>
        <translation>Gommer le dessin</translation>
    </message>
    <message>
        <source>Eraser Stroke</source>
        <translation>Trait de gomme</translation>
    </message>
    <message>
        <source>Every command gets back the keys that it had at first</source>
        <translation>Chaque commande reprend ses premières touches</translation>
    </message>
    <message>
        <source>Every preference goes back to what it was at first</source>
        <translation>Chaque préférence reprend sa valeur initiale</translation>
    </message>
    <message>
        <source>Every start begins with Loop Movie</source>
        <translation>Chaque démarrage commence par « Boucler le clip »</translation>
    </message>
    <message>
        <source>Exact loops: a range turns at its very last frame</source>
        <translation>Boucles exactes : à la dernière image même</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportation</translation>
    </message>
    <message>
        <source>Export As</source>
        <translation>Exporter sous</translation>
    </message>
    <message>
        <source>Export Daylark Movie</source>
        <translation>Exporter un clip Daylark</translation>
    </message>
    <message>
        <source>Export Daylar&amp;k Movie File...</source>
        <translation>Exporter un fichier Daylar&amp;k...</translation>
    </message>
    <message>
        <source>Export Da&amp;ylark Movie...</source>
        <translation>Exporter un clip Da&amp;ylark...</translation>
    </message>
    <message>
        <source>Export &amp;Movie Notes...</source>
        <translation>Exporter les notes du &amp;clip...</translation>
    </message>
    <message>
        <source>Export Notes</source>
        <translation>Exporter les notes</translation>
    </message>
    <message>
        <source>Export Playlist Mani&amp;fest...</source>
        <translation>Exporter le mani&amp;feste...</translation>
    </message>
    <message>
        <source>&amp;Export Playlist Notes...</source>
        <translation>&amp;Exporter les notes de la playlist...</translation>
    </message>
    <message>
        <source>Export Selected Playlists As Sessio&amp;n...</source>
        <translation>Exporter les playlists choisies comme sessio&amp;n...</translation>
    </message>
    <message>
        <source>Export Session As &amp;Reviewed...</source>
        <translation>Exporter la session &amp;revue...</translation>
    </message>
    <message>
        <source>Exported session</source>
        <translation>Session exportée</translation>
    </message>
    <message>
        <source>Exporting Daylark Movie</source>
        <translation>Exportation du clip Daylark</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Exposition</translation>
    </message>
    <message>
        <source>Exposure for looking, stops</source>
        <translation>Exposition de vue, diaphs</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>Favourite Viewer Size</source>
        <translation>Taille préférée de la visionneuse</translation>
    </message>
    <message>
        <source>File format</source>
        <translation>Format de fichier</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Nom de fichier</translation>
    </message>
    <message>
        <source>File &amp;Name on Picture</source>
        <translation>&amp;Nom sur l'image</translation>
    </message>
    <message>
        <source>File names with their extension</source>
        <translation>Noms avec extension</translation>
    </message>
    <message>
        <source>File Not Found</source>
        <translation>Fichier introuvable</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>Fichier introuvable</translation>
    </message>
    <message>
        <source>File not found
%1</source>
        <translation>Fichier introuvable
%1</translation>
    </message>
    <message>
        <source>file was not found.</source>
        <translation>fichier introuvable.</translation>
    </message>
    <message>
        <source>files were not found.</source>
        <translation>fichiers introuvables.</translation>
    </message>
    <message>
        <source>&amp;Filter</source>
        <translation>&amp;Filtre</translation>
    </message>
    <message>
        <source>Filter: %1</source>
        <translation>Filtre : %1</translation>
    </message>
    <message>
        <source>Filter: Flag %1</source>
        <translation>Filtre : drapeau %1</translation>
    </message>
    <message>
        <source>Filter: Show All</source>
        <translation>Filtre : tout afficher</translation>
    </message>
    <message>
        <source>F&amp;ind</source>
        <translation>Rec&amp;hercher</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Find a command or a key</source>
        <translation>Chercher une commande ou une touche</translation>
    </message>
    <message>
        <source>Find files by their path (network volumes)</source>
        <translation>Trouver par le chemin (volumes réseau)</translation>
    </message>
    <message>
        <source>Find in all playlists</source>
        <translation>Chercher dans toutes les playlists</translation>
    </message>
    <message>
        <source>Find Items</source>
        <translation>Chercher des éléments</translation>
    </message>
    <message>
        <source>Find looks at</source>
        <translation>La recherche porte sur</translation>
    </message>
    <message>
        <source>Find Missing Media of Selected &amp;Playlists...</source>
        <translation>Chercher les médias des &amp;playlists choisies...</translation>
    </message>
    <message>
        <source>Find Missing Media of &amp;Session...</source>
        <translation>Chercher les médias de la &amp;session...</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>Résultat &amp;suivant</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>Résultat &amp;précédent</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation>&amp;Rechercher...</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Début</translation>
    </message>
    <message>
        <source>First Bookmark</source>
        <translation>Premier repère</translation>
    </message>
    <message>
        <source>F&amp;irst Frame</source>
        <translation>Prem&amp;ière image</translation>
    </message>
    <message>
        <source>First Frame</source>
        <translation>Première image</translation>
    </message>
    <message>
        <source>First frame is production number</source>
        <translation>La première image a le numéro</translation>
    </message>
    <message>
        <source>First Frame Number</source>
        <translation>Numéro de la première image</translation>
    </message>
    <message>
        <source>First notes are called</source>
        <translation>Premières notes</translation>
    </message>
    <message>
        <source>First TC</source>
        <translation>TC début</translation>
    </message>
    <message>
        <source>Fit Image To Viewer</source>
        <translation>Ajuster l'image à la visionneuse</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>Fixe</translation>
    </message>
    <message>
        <source>&amp;Flag</source>
        <translation>&amp;Drapeau</translation>
    </message>
    <message>
        <source>Flag</source>
        <translation>Drapeau</translation>
    </message>
    <message>
        <source>Flag: %1</source>
        <translation>Drapeau : %1</translation>
    </message>
    <message>
        <source>Flagged</source>
        <translation>Avec drapeau</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Drapeaux</translation>
    </message>
    <message>
        <source>Flip Display</source>
        <translation>Miroir vertical</translation>
    </message>
    <message>
        <source>Flip, upside down</source>
        <translation>Miroir vertical</translation>
    </message>
    <message>
        <source>Floa&amp;t Panels</source>
        <translation>&amp;Détacher les panneaux</translation>
    </message>
    <message>
        <source>Floating</source>
        <translation>Flottant</translation>
    </message>
    <message>
        <source>Flop Display</source>
        <translation>Miroir horizontal</translation>
    </message>
    <message>
        <source>Flop, left to right</source>
        <translation>Miroir horizontal</translation>
    </message>
    <message>
        <source>&amp;Force Relink of Selected Playlists...</source>
        <translation>&amp;Forcer la liaison des playlists choisies...</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format :</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Frame %1</source>
        <translation>Image %1</translation>
    </message>
    <message>
        <source>Frame %1
%2</source>
        <translation>Image %1
%2</translation>
    </message>
    <message>
        <source>Frame &amp;Counter on Picture</source>
        <translation>&amp;Compteur sur l'image</translation>
    </message>
    <message>
        <source>Frame counter, from</source>
        <translation>Compteur, depuis</translation>
    </message>
    <message>
        <source>Frame number or timecode</source>
        <translation>Numéro d'image ou timecode</translation>
    </message>
    <message>
        <source>Frame on screen</source>
        <translation>Image à l’écran</translation>
    </message>
    <message>
        <source>Frame Rate</source>
        <translation>Cadence</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Cadence</translation>
    </message>
    <message>
        <source>Frame Rate…</source>
        <translation>Cadence…</translation>
    </message>
    <message>
        <source>Frame, counted from 1</source>
        <translation>Image, comptée à partir de 1</translation>
    </message>
    <message>
        <source>Frames</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>Frames a second of runs</source>
        <translation>Images par seconde des suites</translation>
    </message>
    <message>
        <source>Frames a second; 0 for what the pictures say:</source>
        <translation>Images par seconde ; 0 : selon les images :</translation>
    </message>
    <message>
        <source>Frames in all</source>
        <translation>Images au total</translation>
    </message>
    <message>
        <source>Frames of a new bookmark</source>
        <translation>Images d'un nouveau repère</translation>
    </message>
    <message>
        <source>From the next start on</source>
        <translation>Dès le prochain démarrage</translation>
    </message>
    <message>
        <source>From the next time that the viewer opens</source>
        <translation>Dès la prochaine ouverture de la visionneuse</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Plein écran</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Plein écran</translation>
    </message>
    <message>
        <source>Full Screen O&amp;n</source>
        <translation>Plei&amp;n écran sur</translation>
    </message>
    <message>
        <source>Full screen: both away</source>
        <translation>Plein écran : rien des deux</translation>
    </message>
    <message>
        <source>Full screen: the controls</source>
        <translation>Plein écran : les commandes</translation>
    </message>
    <message>
        <source>Full screen: the playlist</source>
        <translation>Plein écran : la playlist</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Gamma for looking</source>
        <translation>Gamma de vue</translation>
    </message>
    <message>
        <source>Gat&amp;her Media In Playlist...</source>
        <translation>Rassembler les médias de la playl&amp;ist...</translation>
    </message>
    <message>
        <source>Gather Media In Selected Play&amp;lists...</source>
        <translation>Rassembler les médias des play&amp;lists choisies...</translation>
    </message>
    <message>
        <source>&amp;Gather Selected Media Files...</source>
        <translation>&amp;Rassembler les fichiers choisis...</translation>
    </message>
    <message>
        <source>&amp;Gather Selected Media...</source>
        <translation>&amp;Rassembler les médias choisis...</translation>
    </message>
    <message>
        <source>Gathering Media File %1 of %2</source>
        <translation>Rassemblement du fichier %1 sur %2</translation>
    </message>
    <message>
        <source>Gathering Media: File %1 of %2</source>
        <translation>Rassemblement : fichier %1 sur %2</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Go on at the item reviewed last</source>
        <translation>Reprendre au dernier élément revu</translation>
    </message>
    <message>
        <source>Go to</source>
        <translation>Aller à</translation>
    </message>
    <message>
        <source>Go to First Frame</source>
        <translation>Aller à la première image</translation>
    </message>
    <message>
        <source>&amp;Go to First Frame of Bookmark</source>
        <translation>A&amp;ller au début du repère</translation>
    </message>
    <message>
        <source>&amp;Go to Frame...</source>
        <translation>&amp;Aller à l'image...</translation>
    </message>
    <message>
        <source>Go to &amp;Items</source>
        <translation>Aller aux &amp;éléments</translation>
    </message>
    <message>
        <source>Go to Last Frame</source>
        <translation>Aller à la dernière image</translation>
    </message>
    <message>
        <source>Go to &amp;Playlists</source>
        <translation>Aller aux &amp;playlists</translation>
    </message>
    <message>
        <source>&amp;Grade</source>
        <translation>Étalonna&amp;ge</translation>
    </message>
    <message>
        <source>Grade</source>
        <translation>Étalonnage</translation>
    </message>
    <message>
        <source>Grade Off</source>
        <translation>Étalonnage inactif</translation>
    </message>
    <message>
        <source>Grade On</source>
        <translation>Étalonnage actif</translation>
    </message>
    <message>
        <source>Graphics hardware, where there is</source>
        <translation>la carte graphique, s'il y en a</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Vert</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>Gris</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Groupes</translation>
    </message>
    <message>
        <source>Half Window Size</source>
        <translation>Demi-fenêtre</translation>
    </message>
    <message>
        <source>Handles</source>
        <translation>Poignées</translation>
    </message>
    <message>
        <source>Handles are longer than movie</source>
        <translation>Poignées plus longues que le clip</translation>
    </message>
    <message>
        <source>Has a grade</source>
        <translation>A un étalonnage</translation>
    </message>
    <message>
        <source>Has bookmarks</source>
        <translation>A des repères</translation>
    </message>
    <message>
        <source>Has drawings</source>
        <translation>A des dessins</translation>
    </message>
    <message>
        <source>Has notes</source>
        <translation>A des notes</translation>
    </message>
    <message>
        <source>Head and tail, frames</source>
        <translation>Tête et fin, images</translation>
    </message>
    <message>
        <source>Head handle</source>
        <translation>Poignée de tête</translation>
    </message>
    <message>
        <source>Head handle, frames</source>
        <translation>Tête, images</translation>
    </message>
    <message>
        <source>Held</source>
        <translation>Maintenue</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;ide</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>Masquer %1</translation>
    </message>
    <message>
        <source>&amp;Hide All Panels</source>
        <translation>Mas&amp;quer tous les panneaux</translation>
    </message>
    <message>
        <source>Hide Mask</source>
        <translation>Masquer le cache</translation>
    </message>
    <message>
        <source>Hide the library while the viewer is open</source>
        <translation>Masquer la bibliothèque en visionnage</translation>
    </message>
    <message>
        <source>Histogram</source>
        <translation>Histogramme</translation>
    </message>
    <message>
        <source>How it compares</source>
        <translation>Comment elle compare</translation>
    </message>
    <message>
        <source>How many of the rules must hold</source>
        <translation>Combien de règles doivent tenir</translation>
    </message>
    <message>
        <source>How much memory decoded pictures may take, so that stepping and playing back and forth need not wait. Automatic: a quarter of this machine's memory, at most 4096 MB. The blue strip under the position slider shows which frames are ready.</source>
        <translation>Mémoire que peuvent occuper les images décodées, pour avancer et reculer sans attendre. Automatique : un quart de la mémoire, 4096 Mo au plus. La bande bleue sous le curseur montre les images prêtes.</translation>
    </message>
    <message>
        <source>&amp;Import Session</source>
        <translation>&amp;Importer une session</translation>
    </message>
    <message>
        <source>Import Session</source>
        <translation>Importer une session</translation>
    </message>
    <message>
        <source>In a window of its own</source>
        <translation>dans sa fenêtre</translation>
    </message>
    <message>
        <source>In Playlist &amp;Order</source>
        <translation>Dans l'&amp;ordre de la playlist</translation>
    </message>
    <message>
        <source>in the last days</source>
        <translation>les derniers jours</translation>
    </message>
    <message>
        <source>Input Space</source>
        <translation>Espace d'entrée</translation>
    </message>
    <message>
        <source>Input space</source>
        <translation>Espace d'entrée</translation>
    </message>
    <message>
        <source>Instance</source>
        <translation>Instance</translation>
    </message>
    <message>
        <source>Instance items to "%1"?</source>
        <translation>Instancier les éléments dans « %1 » ?</translation>
    </message>
    <message>
        <source>Invert Muted Bookmarks</source>
        <translation>Inverser les repères muets</translation>
    </message>
    <message>
        <source>is</source>
        <translation>est</translation>
    </message>
    <message>
        <source>is above</source>
        <translation>est au-dessus de</translation>
    </message>
    <message>
        <source>is below</source>
        <translation>est au-dessous de</translation>
    </message>
    <message>
        <source>is found</source>
        <translation>est présent</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>manque</translation>
    </message>
    <message>
        <source>is narrower than</source>
        <translation>est plus étroit que</translation>
    </message>
    <message>
        <source>is not</source>
        <translation>n'est pas</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>n'existe pas</translation>
    </message>
    <message>
        <source>is there</source>
        <translation>existe</translation>
    </message>
    <message>
        <source>is wider than</source>
        <translation>est plus large que</translation>
    </message>
    <message>
        <source>it can not be read</source>
        <translation>lecture impossible</translation>
    </message>
    <message>
        <source>it has no file name</source>
        <translation>pas de nom de fichier</translation>
    </message>
    <message>
        <source>Italic (Ctrl+I)</source>
        <translation>Italique (Ctrl+I)</translation>
    </message>
    <message>
        <source>&amp;Item</source>
        <translation>É&amp;lément</translation>
    </message>
    <message>
        <source>Item &amp;Information</source>
        <translation>&amp;Informations</translation>
    </message>
    <message>
        <source>Item information</source>
        <translation>Informations</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Éléments</translation>
    </message>
    <message>
        <source>Items as a List</source>
        <translation>Éléments en liste</translation>
    </message>
    <message>
        <source>Items as a list</source>
        <translation>Éléments en liste</translation>
    </message>
    <message>
        <source>Items as Tiles</source>
        <translation>Éléments en mosaïque</translation>
    </message>
    <message>
        <source>Items as tiles</source>
        <translation>Éléments en mosaïque</translation>
    </message>
    <message>
        <source>Items in Playlist Order</source>
        <translation>Éléments dans l'ordre de la playlist</translation>
    </message>
    <message>
        <source>Items in the Order of the List</source>
        <translation>Éléments dans l'ordre de la liste</translation>
    </message>
    <message>
        <source>Items of all playlists for which</source>
        <translation>Éléments de toutes les playlists dont</translation>
    </message>
    <message>
        <source>its folder is gone</source>
        <translation>son dossier a disparu</translation>
    </message>
    <message>
        <source>Keep Modified Duplicates</source>
        <translation>Garder les doublons modifiés</translation>
    </message>
    <message>
        <source>Keep the window in the movie's proportions</source>
        <translation>Garder les proportions du clip</translation>
    </message>
    <message>
        <source>Keep These Frames</source>
        <translation>Garder ces images</translation>
    </message>
    <message>
        <source>Kept in the session: goes before the one chosen here, which goes before $OCIO</source>
        <translation>Dans la session : avant celle choisie ici, elle-même avant $OCIO</translation>
    </message>
    <message>
        <source>Kept with the desktop's own thumbnails, not in the session</source>
        <translation>Gardées avec celles du bureau, pas dans la session</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Touche</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Touches</translation>
    </message>
    <message>
        <source>Keys alone or with Shift go by their place: they are named as a US keyboard prints them. With Ctrl, Alt or Meta they go by what they print.</source>
        <translation>Seules ou avec Maj, les touches valent par leur place et portent le nom d'un clavier américain ; avec Ctrl, Alt ou Meta, par ce qu'elles écrivent.</translation>
    </message>
    <message>
        <source>Keys of the Library</source>
        <translation>Touches de la bibliothèque</translation>
    </message>
    <message>
        <source>Keys of the Viewer</source>
        <translation>Touches de la visionneuse</translation>
    </message>
    <message>
        <source>&amp;Keys...</source>
        <translation>&amp;Touches...</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Large files may take several minutes</source>
        <translation>Plusieurs minutes pour les gros fichiers</translation>
    </message>
    <message>
        <source>&amp;Larger Tiles</source>
        <translation>Vignettes plus &amp;grandes</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>&amp;Last Frame</source>
        <translation>&amp;Dernière image</translation>
    </message>
    <message>
        <source>Last Frame</source>
        <translation>Dernière image</translation>
    </message>
    <message>
        <source>Last TC</source>
        <translation>TC fin</translation>
    </message>
    <message>
        <source>Last Visited Frame</source>
        <translation>Dernière image vue</translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation>&amp;Calque</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Calque</translation>
    </message>
    <message>
        <source>Layer: %1</source>
        <translation>Calque : %1</translation>
    </message>
    <message>
        <source>Layouts keep what is docked and a maximised window</source>
        <translation>Les dispositions gardent l'ancrage et l'agrandissement</translation>
    </message>
    <message>
        <source>&amp;Leave It</source>
        <translation>&amp;Laisser</translation>
    </message>
    <message>
        <source>&amp;Leave Text or Full Screen</source>
        <translation>&amp;Quitter le texte ou le plein écran</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Link Anyway</source>
        <translation>Lier quand même</translation>
    </message>
    <message>
        <source>Link Audio File</source>
        <translation>Lier un fichier audio</translation>
    </message>
    <message>
        <source>&amp;Link Audio File...</source>
        <translation>&amp;Lier un fichier audio...</translation>
    </message>
    <message>
        <source>Link Audio File...</source>
        <translation>Lier un fichier audio...</translation>
    </message>
    <message>
        <source>Link Video File</source>
        <translation>Lier un fichier vidéo</translation>
    </message>
    <message>
        <source>&amp;Link Video File...</source>
        <translation>&amp;Lier un fichier vidéo...</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>Look</translation>
    </message>
    <message>
        <source>Look at Higher &amp;Gamma</source>
        <translation>Voir à un &amp;gamma plus haut</translation>
    </message>
    <message>
        <source>Look at It as It &amp;Is</source>
        <translation>Voir &amp;tel quel</translation>
    </message>
    <message>
        <source>Look at It as It Is</source>
        <translation>Voir tel quel</translation>
    </message>
    <message>
        <source>Look at L&amp;ower Gamma</source>
        <translation>Voir à un gamma plus &amp;bas</translation>
    </message>
    <message>
        <source>Look &amp;Brighter</source>
        <translation>Voir plus &amp;clair</translation>
    </message>
    <message>
        <source>Look &amp;Darker</source>
        <translation>Voir plus &amp;sombre</translation>
    </message>
    <message>
        <source>Look for New Pictures</source>
        <translation>Chercher de nouvelles images</translation>
    </message>
    <message>
        <source>Looking at exposure %1%2</source>
        <translation>Vue à l'exposition %1%2</translation>
    </message>
    <message>
        <source>looking at gamma %1</source>
        <translation>vue au gamma %1</translation>
    </message>
    <message>
        <source>Looking for Media Files...</source>
        <translation>Recherche des médias...</translation>
    </message>
    <message>
        <source>&amp;Loop Bookmark</source>
        <translation>&amp;Boucler le repère</translation>
    </message>
    <message>
        <source>Loop Bookmark</source>
        <translation>Boucler le repère</translation>
    </message>
    <message>
        <source>Loop Movie</source>
        <translation>Boucler le clip</translation>
    </message>
    <message>
        <source>Loop Playlist</source>
        <translation>Boucler la playlist</translation>
    </message>
    <message>
        <source>Lower edge</source>
        <translation>Bord inférieur</translation>
    </message>
    <message>
        <source>Manifest</source>
        <translation>Manifeste</translation>
    </message>
    <message>
        <source>Mark &amp;In</source>
        <translation>Marquer l'&amp;entrée</translation>
    </message>
    <message>
        <source>Mark Missing Files of &amp;All Playlists</source>
        <translation>Marquer les fichiers manquants de &amp;toutes les playlists</translation>
    </message>
    <message>
        <source>&amp;Mark Missing Files of Playlist</source>
        <translation>&amp;Marquer les fichiers manquants de la playlist</translation>
    </message>
    <message>
        <source>Mark &amp;Out</source>
        <translation>Marquer la s&amp;ortie</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Cache</translation>
    </message>
    <message>
        <source>Mask opacity</source>
        <translation>Opacité du cache</translation>
    </message>
    <message>
        <source>Mask &amp;Ratio</source>
        <translation>Fo&amp;rmat du cache</translation>
    </message>
    <message>
        <source>Mask ratio</source>
        <translation>Format du cache</translation>
    </message>
    <message>
        <source>Mask Ratio: %1</source>
        <translation>Format du cache : %1</translation>
    </message>
    <message>
        <source>matching file has been relinked.</source>
        <translation>fichier correspondant relié.</translation>
    </message>
    <message>
        <source>matching files have been relinked.</source>
        <translation>fichiers correspondants reliés.</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Médias</translation>
    </message>
    <message>
        <source>Media file</source>
        <translation>Fichier média</translation>
    </message>
    <message>
        <source>Media Files</source>
        <translation>Fichiers médias</translation>
    </message>
    <message>
        <source>Media for</source>
        <translation>Médias pour</translation>
    </message>
    <message>
        <source>Memory for pictures</source>
        <translation>Mémoire pour les images</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Middle Frame</source>
        <translation>Image du milieu</translation>
    </message>
    <message>
        <source>&amp;Minimise</source>
        <translation>Rédu&amp;ire</translation>
    </message>
    <message>
        <source>Minimise Window</source>
        <translation>Réduire la fenêtre</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Manquants</translation>
    </message>
    <message>
        <source>&amp;Missing Media</source>
        <translation>&amp;Médias manquants</translation>
    </message>
    <message>
        <source>Missing pictures of runs</source>
        <translation>Images manquantes des suites</translation>
    </message>
    <message>
        <source>More Controls</source>
        <translation>Autres commandes</translation>
    </message>
    <message>
        <source>More Filters</source>
        <translation>Autres filtres</translation>
    </message>
    <message>
        <source>More Keys</source>
        <translation>Autres touches</translation>
    </message>
    <message>
        <source>Mouse</source>
        <translation>Souris</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Déplacer</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>&amp;Descendre</translation>
    </message>
    <message>
        <source>Move Items Down</source>
        <translation>Descendre les éléments</translation>
    </message>
    <message>
        <source>Move Items Up</source>
        <translation>Monter les éléments</translation>
    </message>
    <message>
        <source>Move Playlist Down</source>
        <translation>Descendre la playlist</translation>
    </message>
    <message>
        <source>Move Playlist Up</source>
        <translation>Monter la playlist</translation>
    </message>
    <message>
        <source>Move the zoomed picture</source>
        <translation>Déplacer l'image agrandie</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>&amp;Monter</translation>
    </message>
    <message>
        <source>&amp;Movie</source>
        <translation>&amp;Clip</translation>
    </message>
    <message>
        <source>Movie</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>Movie of a bundle</source>
        <translation>Clip d'un paquet</translation>
    </message>
    <message>
        <source>Movies start at</source>
        <translation>Les clips débutent à</translation>
    </message>
    <message>
        <source>Mute All Bookmarks</source>
        <translation>Tous les repères muets</translation>
    </message>
    <message>
        <source>Mute Bookmark</source>
        <translation>Repère muet</translation>
    </message>
    <message>
        <source>Mute Bookmarks</source>
        <translation>Repères muets</translation>
    </message>
    <message>
        <source>Muted</source>
        <translation>Muet</translation>
    </message>
    <message>
        <source>muted</source>
        <translation>muet</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>&amp;Narrower Tool</source>
        <translation>Outil plus &amp;fin</translation>
    </message>
    <message>
        <source>New bookmarks last</source>
        <translation>Durée des nouveaux repères</translation>
    </message>
    <message>
        <source>New bookmarks last, frames</source>
        <translation>Nouveaux repères, images</translation>
    </message>
    <message>
        <source>New Da&amp;ted Divider</source>
        <translation>Séparateur da&amp;té</translation>
    </message>
    <message>
        <source>New &amp;Divider</source>
        <translation>Nouveau sépa&amp;rateur</translation>
    </message>
    <message>
        <source>New &amp;Folder List...</source>
        <translation>Nouvelle liste de &amp;dossier...</translation>
    </message>
    <message>
        <source>New &amp;Playlist</source>
        <translation>Nouvelle &amp;playlist</translation>
    </message>
    <message>
        <source>New Playlist With &amp;Copies of Found Items</source>
        <translation>Nouvelle playlist : &amp;copies des résultats</translation>
    </message>
    <message>
        <source>New playlist with copies of what is found; with Ctrl, Alt or Meta held: with instances</source>
        <translation>Nouvelle playlist avec des copies des résultats ; avec Ctrl, Alt ou Meta : des instances</translation>
    </message>
    <message>
        <source>New Playlist With &amp;Instances of Found Items</source>
        <translation>Nouvelle playlist : &amp;instances des résultats</translation>
    </message>
    <message>
        <source>New playlist with what is found</source>
        <translation>Nouvelle playlist des résultats</translation>
    </message>
    <message>
        <source>New playlist, smartlist, folder list or divider</source>
        <translation>Nouvelle playlist, smartlist, liste de dossier ou séparateur</translation>
    </message>
    <message>
        <source>New &amp;Smartlist</source>
        <translation>Nouvelle &amp;smartlist</translation>
    </message>
    <message>
        <source>&amp;Next Bookmark</source>
        <translation>Repère sui&amp;vant</translation>
    </message>
    <message>
        <source>&amp;Next Frame</source>
        <translation>Image &amp;suivante</translation>
    </message>
    <message>
        <source>&amp;Next Movie</source>
        <translation>Clip &amp;suivant</translation>
    </message>
    <message>
        <source>Next or previous bookmark</source>
        <translation>Repère suivant ou précédent</translation>
    </message>
    <message>
        <source>Next or previous frame</source>
        <translation>Image suivante ou précédente</translation>
    </message>
    <message>
        <source>Ne&amp;xt Scope</source>
        <translation>Scope s&amp;uivant</translation>
    </message>
    <message>
        <source>No BMs</source>
        <translation>Sans rep.</translation>
    </message>
    <message>
        <source>No bookmark at this frame, and none is selected</source>
        <translation>Aucun repère à cette image, aucun n'est choisi</translation>
    </message>
    <message>
        <source>No bookmark at this frame, and none is selected (%1 adds one)</source>
        <translation>Aucun repère à cette image, aucun n'est choisi (%1 en ajoute un)</translation>
    </message>
    <message>
        <source>No bookmark is selected</source>
        <translation>Aucun repère n'est sélectionné</translation>
    </message>
    <message>
        <source>No CCs</source>
        <translation>Sans étal.</translation>
    </message>
    <message>
        <source>No command or key is called so.</source>
        <translation>Aucune commande ni touche de ce nom.</translation>
    </message>
    <message>
        <source>No Drawings</source>
        <translation>Sans dessins</translation>
    </message>
    <message>
        <source>No duplicates found</source>
        <translation>Aucun doublon</translation>
    </message>
    <message>
        <source>No Files Are Missing</source>
        <translation>Aucun fichier ne manque</translation>
    </message>
    <message>
        <source>No Files Found</source>
        <translation>Aucun fichier trouvé</translation>
    </message>
    <message>
        <source>No Flag</source>
        <translation>Aucun drapeau</translation>
    </message>
    <message>
        <source>No item answers the rules of this smartlist</source>
        <translation>Aucun élément ne répond aux règles de cette smartlist</translation>
    </message>
    <message>
        <source>No item selected</source>
        <translation>Aucun élément choisi</translation>
    </message>
    <message>
        <source>&amp;No Key</source>
        <translation>&amp;Aucune</translation>
    </message>
    <message>
        <source>No Matches Found</source>
        <translation>Aucun résultat</translation>
    </message>
    <message>
        <source>No matching files were found in this location.</source>
        <translation>Aucun fichier correspondant à cet endroit.</translation>
    </message>
    <message>
        <source>No media in this folder</source>
        <translation>Aucun média dans ce dossier</translation>
    </message>
    <message>
        <source>No movies found to export</source>
        <translation>Aucun clip à exporter</translation>
    </message>
    <message>
        <source>No Notes</source>
        <translation>Sans notes</translation>
    </message>
    <message>
        <source>No picture in this folder has such a name.</source>
        <translation>Aucune image de ce dossier ne porte un tel nom.</translation>
    </message>
    <message>
        <source>No saved layout</source>
        <translation>Aucune disposition enregistrée</translation>
    </message>
    <message>
        <source>No sound</source>
        <translation>Sans son</translation>
    </message>
    <message>
        <source>No such frame in this movie</source>
        <translation>Pas de telle image dans ce clip</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source>Not found on this machine:</source>
        <translation>Introuvables sur cette machine :</translation>
    </message>
    <message>
        <source>Not Missing</source>
        <translation>Présents</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>&amp;Notes</source>
        <translation>&amp;Notes</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>of these hold:</source>
        <translation>de ces règles :</translation>
    </message>
    <message>
        <source>Off again at every start</source>
        <translation>De nouveau désactivé à chaque démarrage</translation>
    </message>
    <message>
        <source>Okay</source>
        <translation>D'accord</translation>
    </message>
    <message>
        <source>on</source>
        <translation>le</translation>
    </message>
    <message>
        <source>On again at every start</source>
        <translation>De nouveau activé à chaque démarrage</translation>
    </message>
    <message>
        <source>One Shot</source>
        <translation>Une fois</translation>
    </message>
    <message>
        <source>Only When Paused</source>
        <translation>En pause seulement</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Opacité</translation>
    </message>
    <message>
        <source>Opacity of the tool</source>
        <translation>Opacité de l'outil</translation>
    </message>
    <message>
        <source>Open files from the desktop in the viewer</source>
        <translation>Ouvrir les fichiers du bureau en visionneuse</translation>
    </message>
    <message>
        <source>&amp;Open in Viewer</source>
        <translation>&amp;Ouvrir dans la visionneuse</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Ouvrir le lien</translation>
    </message>
    <message>
        <source>Open the previous session at start</source>
        <translation>Rouvrir la dernière session au démarrage</translation>
    </message>
    <message>
        <source>Open the viewer's windows as they were</source>
        <translation>Rouvrir les fenêtres de la visionneuse</translation>
    </message>
    <message>
        <source>OpenGL</source>
        <translation>OpenGL</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Order of Bookmarks</source>
        <translation>Ordre des repères</translation>
    </message>
    <message>
        <source>Order of Items</source>
        <translation>Ordre des éléments</translation>
    </message>
    <message>
        <source>Order of Playlists</source>
        <translation>Ordre des playlists</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Origine</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Autre…</translation>
    </message>
    <message>
        <source>Over the picture</source>
        <translation>Sur l'image</translation>
    </message>
    <message>
        <source>Own name</source>
        <translation>Nom propre</translation>
    </message>
    <message>
        <source>Pa&amp;nels</source>
        <translation>Pa&amp;nneaux</translation>
    </message>
    <message>
        <source>Panels</source>
        <translation>Panneaux</translation>
    </message>
    <message>
        <source>Panels come back when it is left</source>
        <translation>Les panneaux reviennent ensuite</translation>
    </message>
    <message>
        <source>Paste &amp;Bookmarks</source>
        <translation>&amp;Coller les repères</translation>
    </message>
    <message>
        <source>Paste Bookmarks</source>
        <translation>Coller les repères</translation>
    </message>
    <message>
        <source>&amp;Paste Grade</source>
        <translation>C&amp;oller l'étalonnage</translation>
    </message>
    <message>
        <source>Paste Grade onto &amp;All Movies</source>
        <translation>Coller l'étalonnage sur &amp;tous les clips</translation>
    </message>
    <message>
        <source>Paste Link</source>
        <translation>Coller le lien</translation>
    </message>
    <message>
        <source>Paste Link: Add Its Media</source>
        <translation>Coller le lien : ajouter ses médias</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Chemin</translation>
    </message>
    <message>
        <source>P&amp;ause</source>
        <translation>P&amp;ause</translation>
    </message>
    <message>
        <source>P&amp;icture</source>
        <translation>I&amp;mage</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Picture Size</source>
        <translation>Taille de l'image</translation>
    </message>
    <message>
        <source>Picture, %1 bit</source>
        <translation>Image, %1 bits</translation>
    </message>
    <message>
        <source>Pictures Not Readable</source>
        <translation>Images illisibles</translation>
    </message>
    <message>
        <source>Ping-Pong</source>
        <translation>Aller-retour</translation>
    </message>
    <message>
        <source>Pixel &amp;Aspect</source>
        <translation>&amp;Aspect des pixels</translation>
    </message>
    <message>
        <source>Pixel Aspect: %1</source>
        <translation>Aspect des pixels : %1</translation>
    </message>
    <message>
        <source>P&amp;ixel Read-Out</source>
        <translation>Valeurs du p&amp;ixel</translation>
    </message>
    <message>
        <source>Pixel read-out</source>
        <translation>Valeurs du pixel</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixels</translation>
    </message>
    <message>
        <source>Play &amp;Backwards</source>
        <translation>Lire en a&amp;rrière</translation>
    </message>
    <message>
        <source>Play &amp;Forwards</source>
        <translation>Lire en a&amp;vant</translation>
    </message>
    <message>
        <source>Play Movie Once</source>
        <translation>Clip une fois</translation>
    </message>
    <message>
        <source>Play Playlist Once</source>
        <translation>Playlist une fois</translation>
    </message>
    <message>
        <source>Play when the viewer opens</source>
        <translation>Lire à l'ouverture</translation>
    </message>
    <message>
        <source>&amp;Play/Pause</source>
        <translation>&amp;Lecture/pause</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Lecture</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Lecture</translation>
    </message>
    <message>
        <source>Play&amp;back Controls</source>
        <translation>Commandes de &amp;lecture</translation>
    </message>
    <message>
        <source>Playback Controls</source>
        <translation>Commandes de lecture</translation>
    </message>
    <message>
        <source>Playback range: frames %1 to %2</source>
        <translation>Plage : images %1 à %2</translation>
    </message>
    <message>
        <source>Playback &amp;Statistics</source>
        <translation>&amp;Statistiques de lecture</translation>
    </message>
    <message>
        <source>&amp;Playlist</source>
        <translation>&amp;Playlist</translation>
    </message>
    <message>
        <source>Playlist</source>
        <translation>Playlist</translation>
    </message>
    <message>
        <source>Playlist at the right edge</source>
        <translation>Playlist au bord droit</translation>
    </message>
    <message>
        <source>Playlist name</source>
        <translation>Nom de la playlist</translation>
    </message>
    <message>
        <source>Playlist of Found Items</source>
        <translation>Playlist des résultats</translation>
    </message>
    <message>
        <source>Playlists</source>
        <translation>Playlists</translation>
    </message>
    <message>
        <source>Plays at the movie's own rate</source>
        <translation>Lit à la cadence du clip</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Pre&amp;ferences...</source>
        <translation>Pré&amp;férences...</translation>
    </message>
    <message>
        <source>Press a further key for the command</source>
        <translation>Appuyer sur une touche de plus</translation>
    </message>
    <message>
        <source>Press a further key for “%1”. Esc: leave it.</source>
        <translation>Touche de plus pour « %1 ». Échap : laisser.</translation>
    </message>
    <message>
        <source>Press another key instead of the command's own</source>
        <translation>Appuyer sur une autre touche à la place</translation>
    </message>
    <message>
        <source>Press the key that “%1” is to have. Esc: leave it.</source>
        <translation>Touche pour « %1 ». Échap : laisser.</translation>
    </message>
    <message>
        <source>&amp;Previous Bookmark</source>
        <translation>Repère p&amp;récédent</translation>
    </message>
    <message>
        <source>P&amp;revious Frame</source>
        <translation>Image p&amp;récédente</translation>
    </message>
    <message>
        <source>&amp;Previous Movie</source>
        <translation>Clip &amp;précédent</translation>
    </message>
    <message>
        <source>Prod</source>
        <translation>Prod</translation>
    </message>
    <message>
        <source>Prod %1</source>
        <translation>Prod %1</translation>
    </message>
    <message>
        <source>Prod %1 to %2, %3, a timecode, +8, -8</source>
        <translation>Prod %1 à %2, %3, un timecode, +8, -8</translation>
    </message>
    <message>
        <source>Prod First</source>
        <translation>Prod première</translation>
    </message>
    <message>
        <source>Prod frames</source>
        <translation>Images Prod</translation>
    </message>
    <message>
        <source>Prod Last</source>
        <translation>Prod dernière</translation>
    </message>
    <message>
        <source>Production number of the first frame</source>
        <translation>Numéro de production de la première image</translation>
    </message>
    <message>
        <source>Production number where nobody gave one</source>
        <translation>Numéro de production à défaut</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violet</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualité</translation>
    </message>
    <message>
        <source>Quarter Window Size</source>
        <translation>Quart de fenêtre</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Range</source>
        <translation>&amp;Plage</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Plage</translation>
    </message>
    <message>
        <source>Range of the Run</source>
        <translation>Plage de la suite</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Cadence</translation>
    </message>
    <message>
        <source>Rate      %1</source>
        <translation>Cadence   %1</translation>
    </message>
    <message>
        <source>Recent Sessio&amp;ns</source>
        <translation>Sessions récen&amp;tes</translation>
    </message>
    <message>
        <source>Recreate &amp;All Thumbnails</source>
        <translation>Refaire &amp;toutes les vignettes</translation>
    </message>
    <message>
        <source>Recreate &amp;Missing Thumbnails</source>
        <translation>Refaire les vignettes &amp;manquantes</translation>
    </message>
    <message>
        <source>Recreate &amp;Selected Thumbnails</source>
        <translation>Refaire les vignettes &amp;choisies</translation>
    </message>
    <message>
        <source>Recreate the thumbnails of all items: %1</source>
        <translation>Refaire toutes les vignettes : %1</translation>
    </message>
    <message>
        <source>Recreate the thumbnails of the selected items: %1</source>
        <translation>Refaire les vignettes des éléments choisis : %1</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rouge</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Rétablir : %1</translation>
    </message>
    <message>
        <source>Relink</source>
        <translation>Relier</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Remove %1 Items</source>
        <translation>Retirer %1 éléments</translation>
    </message>
    <message>
        <source>Remove A&amp;ctive Bookmarks</source>
        <translation>Retirer les repères act&amp;ifs</translation>
    </message>
    <message>
        <source>Remove All Bookmarks</source>
        <translation>Retirer tous les repères</translation>
    </message>
    <message>
        <source>Remove All Bookmarks From Movie?</source>
        <translation>Retirer tous les repères du clip ?</translation>
    </message>
    <message>
        <source>Remove A&amp;ll Bookmarks...</source>
        <translation>Retirer &amp;tous les repères...</translation>
    </message>
    <message>
        <source>Remove All Drawings</source>
        <translation>Retirer tous les dessins</translation>
    </message>
    <message>
        <source>Remove &amp;All Drawings From Movie...</source>
        <translation>Retirer tous les dessins du &amp;clip...</translation>
    </message>
    <message>
        <source>Remove All Drawings From Movie?</source>
        <translation>Retirer tous les dessins du clip ?</translation>
    </message>
    <message>
        <source>Remove All Duplicates</source>
        <translation>Retirer tous les doublons</translation>
    </message>
    <message>
        <source>Remove all media?</source>
        <translation>Retirer tous les médias ?</translation>
    </message>
    <message>
        <source>Re&amp;move Audio</source>
        <translation>Reti&amp;rer le son</translation>
    </message>
    <message>
        <source>Remove Audio</source>
        <translation>Retirer le son</translation>
    </message>
    <message>
        <source>Re&amp;move Bookmark</source>
        <translation>Retirer le repè&amp;re</translation>
    </message>
    <message>
        <source>Remove Bookmark</source>
        <translation>Retirer le repère</translation>
    </message>
    <message>
        <source>Remove Bookmarks</source>
        <translation>Retirer des repères</translation>
    </message>
    <message>
        <source>Remove &amp;Current Drawings</source>
        <translation>Retirer les dessins &amp;affichés</translation>
    </message>
    <message>
        <source>Remove Drawings</source>
        <translation>Retirer les dessins</translation>
    </message>
    <message>
        <source>Remove Duplicates</source>
        <translation>Retirer les doublons</translation>
    </message>
    <message>
        <source>Remove Dup&amp;licates...</source>
        <translation>Retirer les doub&amp;lons...</translation>
    </message>
    <message>
        <source>Remove Empty Playlists</source>
        <translation>Retirer les playlists vides</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Retirer l'élément</translation>
    </message>
    <message>
        <source>&amp;Remove Items</source>
        <translation>&amp;Retirer les éléments</translation>
    </message>
    <message>
        <source>Remove Items</source>
        <translation>Retirer les éléments</translation>
    </message>
    <message>
        <source>Remove &amp;Latest Stroke</source>
        <translation>Retirer le dernier &amp;trait</translation>
    </message>
    <message>
        <source>Remove Movie</source>
        <translation>Retirer le clip</translation>
    </message>
    <message>
        <source>Remove Movies</source>
        <translation>Retirer les clips</translation>
    </message>
    <message>
        <source>Remove Pla&amp;ylist</source>
        <translation>Retirer la pla&amp;ylist</translation>
    </message>
    <message>
        <source>Remove Playlist</source>
        <translation>Retirer la playlist</translation>
    </message>
    <message>
        <source>Remove Playlist Without Question</source>
        <translation>Retirer la playlist sans demander</translation>
    </message>
    <message>
        <source>Remove Playlists</source>
        <translation>Retirer les playlists</translation>
    </message>
    <message>
        <source>Remove Selected Movie?</source>
        <translation>Retirer le clip choisi ?</translation>
    </message>
    <message>
        <source>Remove Selected Movies?</source>
        <translation>Retirer les clips choisis ?</translation>
    </message>
    <message>
        <source>Remove Selected Playlist?</source>
        <translation>Retirer la playlist choisie ?</translation>
    </message>
    <message>
        <source>Remove Selected Playlists?</source>
        <translation>Retirer les playlists choisies ?</translation>
    </message>
    <message>
        <source>&amp;Remove Sorting</source>
        <translation>Supprimer le &amp;tri</translation>
    </message>
    <message>
        <source>Remove Stroke</source>
        <translation>Retirer le trait</translation>
    </message>
    <message>
        <source>Remove this rule</source>
        <translation>Retirer cette règle</translation>
    </message>
    <message>
        <source>Re&amp;name Playlist</source>
        <translation>Re&amp;nommer la playlist</translation>
    </message>
    <message>
        <source>Rename Playlist</source>
        <translation>Renommer la playlist</translation>
    </message>
    <message>
        <source>Renderer  %1</source>
        <translation>Rendu     %1</translation>
    </message>
    <message>
        <source>R&amp;epeat</source>
        <translation>Répé&amp;tition</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Répétition</translation>
    </message>
    <message>
        <source>Repeat: %1</source>
        <translation>Répétition : %1</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Remplacer</translation>
    </message>
    <message>
        <source>Replace "%1"?</source>
        <translation>Remplacer « %1 » ?</translation>
    </message>
    <message>
        <source>Replace Current Session?</source>
        <translation>Remplacer la session actuelle ?</translation>
    </message>
    <message>
        <source>Replace Session</source>
        <translation>Remplacer la session</translation>
    </message>
    <message>
        <source>Replacing it will overwrite what it holds.</source>
        <translation>Le remplacer écrase ce qu'il contient.</translation>
    </message>
    <message>
        <source>Rese&amp;t</source>
        <translation>Rétabli&amp;r</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>Reset %1</source>
        <translation>Réinitialiser %1</translation>
    </message>
    <message>
        <source>Reset All &amp;Keys</source>
        <translation>Tout ré&amp;tablir</translation>
    </message>
    <message>
        <source>&amp;Reset All Preferences</source>
        <translation>&amp;Réinitialiser tout</translation>
    </message>
    <message>
        <source>&amp;Reset Grade</source>
        <translation>&amp;Réinitialiser l'étalonnage</translation>
    </message>
    <message>
        <source>&amp;Reset Handles</source>
        <translation>&amp;Réinitialiser les poignées</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Définition</translation>
    </message>
    <message>
        <source>Restore Panel Layout &amp;1</source>
        <translation>Rétablir la disposition &amp;1</translation>
    </message>
    <message>
        <source>Restore Panel Layout &amp;2</source>
        <translation>Rétablir la disposition &amp;2</translation>
    </message>
    <message>
        <source>&amp;Reveal in File Browser</source>
        <translation>Montrer dans le &amp;gestionnaire</translation>
    </message>
    <message>
        <source>Re&amp;veal in File Browser</source>
        <translation>&amp;Montrer dans le gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>Revert Audio</source>
        <translation>Rétablir le son</translation>
    </message>
    <message>
        <source>&amp;Revert to Original Audio</source>
        <translation>&amp;Revenir au son d'origine</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RVB</translation>
    </message>
    <message>
        <source>RGB Parade</source>
        <translation>Parade RVB</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Bord droit</translation>
    </message>
    <message>
        <source>Rules of %1</source>
        <translation>Règles de %1</translation>
    </message>
    <message>
        <source>Rules of Smartlist</source>
        <translation>Règles de la smartlist</translation>
    </message>
    <message>
        <source>Same As Source</source>
        <translation>Comme la source</translation>
    </message>
    <message>
        <source>Same As Window</source>
        <translation>Comme la fenêtre</translation>
    </message>
    <message>
        <source>Same Frame</source>
        <translation>Même image</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>Enregi&amp;strer</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Save As Layout 1</source>
        <translation>Comme disposition 1</translation>
    </message>
    <message>
        <source>Save As Layout 2</source>
        <translation>Comme disposition 2</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Enregistrer sous...</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Enregistrer sous…</translation>
    </message>
    <message>
        <source>Save Audio</source>
        <translation>Enregistrer le son</translation>
    </message>
    <message>
        <source>&amp;Save Audio As...</source>
        <translation>Enregi&amp;strer le son sous...</translation>
    </message>
    <message>
        <source>Save Audio As...</source>
        <translation>Enregistrer le son sous...</translation>
    </message>
    <message>
        <source>Save Current Panel Layout?</source>
        <translation>Enregistrer la disposition ?</translation>
    </message>
    <message>
        <source>Save Mo&amp;vie As...</source>
        <translation>Enregistrer le &amp;clip sous...</translation>
    </message>
    <message>
        <source>Save Movie As...</source>
        <translation>Enregistrer le clip sous...</translation>
    </message>
    <message>
        <source>Sa&amp;ve Panel Layout...</source>
        <translation>Enregistrer la &amp;disposition...</translation>
    </message>
    <message>
        <source>Save Playlist As...</source>
        <translation>Enregistrer la playlist sous...</translation>
    </message>
    <message>
        <source>Save Session</source>
        <translation>Enregistrer la session</translation>
    </message>
    <message>
        <source>Save Session &amp;As...</source>
        <translation>Enregistrer la session so&amp;us...</translation>
    </message>
    <message>
        <source>Save Snapshot</source>
        <translation>Enregistrer la capture</translation>
    </message>
    <message>
        <source>Save Snapshot As...</source>
        <translation>Enregistrer la capture sous...</translation>
    </message>
    <message>
        <source>Saving Audio</source>
        <translation>Enregistrement du son</translation>
    </message>
    <message>
        <source>Saving Movie</source>
        <translation>Enregistrement du clip</translation>
    </message>
    <message>
        <source>Say in empty lists what can be dropped there</source>
        <translation>Dire dans les listes vides ce qu'on y dépose</translation>
    </message>
    <message>
        <source>Say in passing that handles are longer than a movie shown</source>
        <translation>Dire en passant que les poignées dépassent le clip</translation>
    </message>
    <message>
        <source>Say when many items were changed at once</source>
        <translation>Signaler les modifications en nombre</translation>
    </message>
    <message>
        <source>Scope</source>
        <translation>Scope</translation>
    </message>
    <message>
        <source>Scope: %1</source>
        <translation>Scope : %1</translation>
    </message>
    <message>
        <source>Scop&amp;es</source>
        <translation>Scop&amp;es</translation>
    </message>
    <message>
        <source>Scopes</source>
        <translation>Scopes</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Search Automaticall&amp;y</source>
        <translation>Chercher &amp;automatiquement</translation>
    </message>
    <message>
        <source>Search Automatically for Missing Media</source>
        <translation>Chercher les médias manquants automatiquement</translation>
    </message>
    <message>
        <source>Search Filenames</source>
        <translation>Noms de fichier</translation>
    </message>
    <message>
        <source>Search Filepaths &amp; Names</source>
        <translation>Chemins et noms</translation>
    </message>
    <message>
        <source>Search Folder</source>
        <translation>Fouiller le dossier</translation>
    </message>
    <message>
        <source>Search for missing media automatically</source>
        <translation>Chercher les médias manquants d'office</translation>
    </message>
    <message>
        <source>Search &amp;Items</source>
        <translation>Chercher des é&amp;léments</translation>
    </message>
    <message>
        <source>Search &amp;Now</source>
        <translation>Chercher &amp;maintenant</translation>
    </message>
    <message>
        <source>Search Now for Missing Media</source>
        <translation>Chercher maintenant les médias manquants</translation>
    </message>
    <message>
        <source>Search the Items' Paths</source>
        <translation>Chercher dans les chemins</translation>
    </message>
    <message>
        <source>Search the items' paths</source>
        <translation>Chercher dans les chemins</translation>
    </message>
    <message>
        <source>Search under</source>
        <translation>Chercher sous</translation>
    </message>
    <message>
        <source>Searching for Media Files...</source>
        <translation>Recherche des médias...</translation>
    </message>
    <message>
        <source>Second Frame</source>
        <translation>Deuxième image</translation>
    </message>
    <message>
        <source>Second Notes</source>
        <translation>Secondes notes</translation>
    </message>
    <message>
        <source>Second notes are called</source>
        <translation>Secondes notes</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Select A Folder To Search</source>
        <translation>Choisir le dossier à fouiller</translation>
    </message>
    <message>
        <source>Select a movie and try again</source>
        <translation>Choisissez un clip et réessayez</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>Tout sé&amp;lectionner</translation>
    </message>
    <message>
        <source>Select More Than One Playlist</source>
        <translation>Choisissez plusieurs playlists</translation>
    </message>
    <message>
        <source>Select one and try again</source>
        <translation>Choisissez-en une et réessayez</translation>
    </message>
    <message>
        <source>Select one item and try again</source>
        <translation>Choisissez un élément et réessayez</translation>
    </message>
    <message>
        <source>Select only one and try again</source>
        <translation>N'en choisissez qu'une et réessayez</translation>
    </message>
    <message>
        <source>Session</source>
        <translation>Session</translation>
    </message>
    <message>
        <source>Session of this run</source>
        <translation>Session en cours</translation>
    </message>
    <message>
        <source>Set First Frame to Frame on Screen</source>
        <translation>Première image : celle affichée</translation>
    </message>
    <message>
        <source>Set Frame Counter to &amp;One</source>
        <translation>Compteur à &amp;un</translation>
    </message>
    <message>
        <source>Set Last Frame from Number of Frames</source>
        <translation>Dernière image d'après le nombre</translation>
    </message>
    <message>
        <source>Set Last Frame to Frame on Screen</source>
        <translation>Dernière image : celle affichée</translation>
    </message>
    <message>
        <source>Set Thumbnail Image</source>
        <translation>Utiliser cette image comme vignette</translation>
    </message>
    <message>
        <source>Set to 1</source>
        <translation>Mettre à 1</translation>
    </message>
    <message>
        <source>Set Width (maintains window ratio)</source>
        <translation>Largeur choisie (proportions)</translation>
    </message>
    <message>
        <source>sh010.1001.exr, sh010.1002.exr, … as one item</source>
        <translation>sh010.1001.exr, sh010.1002.exr, … en un élément</translation>
    </message>
    <message>
        <source>Sharp thumbnails at every size</source>
        <translation>Vignettes nettes à toute taille</translation>
    </message>
    <message>
        <source>Shift+Wheel</source>
        <translation>Maj+molette</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Tout afficher</translation>
    </message>
    <message>
        <source>&amp;Show All Panels</source>
        <translation>&amp;Montrer tous les panneaux</translation>
    </message>
    <message>
        <source>Show bookmark texts</source>
        <translation>Afficher les textes des repères</translation>
    </message>
    <message>
        <source>Show drawings</source>
        <translation>Afficher les dessins</translation>
    </message>
    <message>
        <source>Show file extensions</source>
        <translation>Afficher les extensions</translation>
    </message>
    <message>
        <source>&amp;Show Grade</source>
        <translation>&amp;Montrer l'étalonnage</translation>
    </message>
    <message>
        <source>Show items at start</source>
        <translation>Éléments au démarrage</translation>
    </message>
    <message>
        <source>Show Mask</source>
        <translation>Afficher le cache</translation>
    </message>
    <message>
        <source>Show playback statistics</source>
        <translation>Afficher les statistiques de lecture</translation>
    </message>
    <message>
        <source>Show the file name</source>
        <translation>Afficher le nom du fichier</translation>
    </message>
    <message>
        <source>Show the frame counter</source>
        <translation>Afficher le compteur</translation>
    </message>
    <message>
        <source>Show the mask</source>
        <translation>Afficher le cache</translation>
    </message>
    <message>
        <source>Show the timecode</source>
        <translation>Afficher le timecode</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Visibles</translation>
    </message>
    <message>
        <source>Shown Raw</source>
        <translation>Image brute</translation>
    </message>
    <message>
        <source>Shows the folder %1</source>
        <translation>Montre le dossier %1</translation>
    </message>
    <message>
        <source>Single keys work</source>
        <translation>Touches simples actives</translation>
    </message>
    <message>
        <source>Single letters and signs go by their place on the keyboard: they are named as a US keyboard prints them.</source>
        <translation>Lettres et signes seuls valent par leur place : ils portent le nom d'un clavier américain.</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Size (MB)</source>
        <translation>Taille (Mo)</translation>
    </message>
    <message>
        <source>Size in all</source>
        <translation>Taille totale</translation>
    </message>
    <message>
        <source>Slate</source>
        <translation>Ardoise</translation>
    </message>
    <message>
        <source>&amp;Smaller Tiles</source>
        <translation>Vignettes plus &amp;petites</translation>
    </message>
    <message>
        <source>Smartlist</source>
        <translation>Smartlist</translation>
    </message>
    <message>
        <source>Smartlist R&amp;ules...</source>
        <translation>Règles de la s&amp;martlist...</translation>
    </message>
    <message>
        <source>Snapshot</source>
        <translation>Capture</translation>
    </message>
    <message>
        <source>Snapshots</source>
        <translation>Captures</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Logiciel</translation>
    </message>
    <message>
        <source>Some files are missing</source>
        <translation>Certains fichiers manquent</translation>
    </message>
    <message>
        <source>Some Files Found</source>
        <translation>Certains fichiers trouvés</translation>
    </message>
    <message>
        <source>Some items in this session were created with an older version of Daylark.

Click "Update" below to update them. Drawings in these movies will be lost.</source>
        <translation>Certains éléments de cette session viennent d'une version plus ancienne de Daylark.

Cliquez sur « Mettre à jour ». Les dessins de ces clips seront perdus.</translation>
    </message>
    <message>
        <source>Some media files in this link weren't found</source>
        <translation>Certains médias de ce lien manquent</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Son</translation>
    </message>
    <message>
        <source>Sound tracks</source>
        <translation>Pistes son</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Vitesse</translation>
    </message>
    <message>
        <source>Speed %1</source>
        <translation>Vitesse %1</translation>
    </message>
    <message>
        <source>standing</source>
        <translation>arrêt</translation>
    </message>
    <message>
        <source>Stands in several playlists</source>
        <translation>Dans plusieurs playlists</translation>
    </message>
    <message>
        <source>Start New Session</source>
        <translation>Nouvelle session</translation>
    </message>
    <message>
        <source>Start timecode</source>
        <translation>Timecode de départ</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Stop Looping Bookmark</source>
        <translation>Arrêter la boucle</translation>
    </message>
    <message>
        <source>Stroke</source>
        <translation>Trait</translation>
    </message>
    <message>
        <source>Tail handle</source>
        <translation>Poignée de fin</translation>
    </message>
    <message>
        <source>Tail handle, frames</source>
        <translation>Fin, images</translation>
    </message>
    <message>
        <source>&amp;Take It</source>
        <translation>&amp;Prendre</translation>
    </message>
    <message>
        <source>Take runs of numbered pictures as movies</source>
        <translation>Prendre les suites d'images comme clips</translation>
    </message>
    <message>
        <source>Take S&amp;napshot...</source>
        <translation>Fai&amp;re une capture...</translation>
    </message>
    <message>
        <source>Take still images as well as movies</source>
        <translation>Accepter aussi les images fixes</translation>
    </message>
    <message>
        <source>Take these default handles</source>
        <translation>Prendre ces poignées</translation>
    </message>
    <message>
        <source>Take up the brush when the drawing tools open</source>
        <translation>Prendre le pinceau avec les outils</translation>
    </message>
    <message>
        <source>Take up the brush when they open</source>
        <translation>Prendre aussitôt le pinceau</translation>
    </message>
    <message>
        <source>Text Colour</source>
        <translation>Couleur du texte</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>Couleur du texte</translation>
    </message>
    <message>
        <source>That of its timecode</source>
        <translation>Celui de son timecode</translation>
    </message>
    <message>
        <source>The audio could not be saved as "%1".</source>
        <translation>Le son n'a pas pu être enregistré sous « %1 ».</translation>
    </message>
    <message>
        <source>The colour configuration cannot be used, the picture is shown raw: %1</source>
        <translation>Configuration des couleurs inutilisable, image brute : %1</translation>
    </message>
    <message>
        <source>The command had no key at first</source>
        <translation>La commande n'avait pas de touche</translation>
    </message>
    <message>
        <source>The command has no key any more</source>
        <translation>La commande n'a plus de touche</translation>
    </message>
    <message>
        <source>The desktop's</source>
        <translation>Celle du bureau</translation>
    </message>
    <message>
        <source>The filenames don't match.  Link anyway?</source>
        <translation>Les noms ne correspondent pas. Lier quand même ?</translation>
    </message>
    <message>
        <source>The filter hides all items of this playlist.
Escape in the search field or Show All brings them back.</source>
        <translation>Le filtre masque tous les éléments de cette playlist.
Échap dans la recherche ou « Tout afficher » les ramène.</translation>
    </message>
    <message>
        <source>The frame on screen counts as 1</source>
        <translation>L'image affichée compte pour 1</translation>
    </message>
    <message>
        <source>The other number</source>
        <translation>L’autre numéro</translation>
    </message>
    <message>
        <source>The picture is drawn by</source>
        <translation>L'image est tracée par</translation>
    </message>
    <message>
        <source>The picture is shown raw: %1</source>
        <translation>L'image est montrée brute : %1</translation>
    </message>
    <message>
        <source>The pictures of this run can't be shown: %1.</source>
        <translation>Les images de cette suite ne peuvent être montrées : %1.</translation>
    </message>
    <message>
        <source>The range is off; once more loops the bookmark</source>
        <translation>La plage est désactivée ; encore une fois : boucler le repère</translation>
    </message>
    <message>
        <source>The session could not be written anywhere: %1.</source>
        <translation>La session n'a pu être écrite nulle part : %1.</translation>
    </message>
    <message>
        <source>The session could not be written to its own place. It lies in "%1" until you log out or the machine stops: copy it to a disk with room and import it.</source>
        <translation>La session n'a pu être écrite à sa place. Elle est dans « %1 » jusqu'à la fermeture de session ou l'arrêt : copiez-la sur un disque qui a de la place et importez-la.</translation>
    </message>
    <message>
        <source>The session of the last run was not restored. Saving now puts what is in the library in the place of what that file holds.</source>
        <translation>La dernière session n'a pas été restaurée. Enregistrer maintenant remplace le contenu de ce fichier par celui de la bibliothèque.</translation>
    </message>
    <message>
        <source>The session's colour configuration cannot be used, the picture is shown raw: %1</source>
        <translation>La configuration de couleur de la session est inutilisable, l’image est montrée brute : %1</translation>
    </message>
    <message>
        <source>The text was cut: it is longer than notes can take at once</source>
        <translation>Texte coupé : trop long pour les notes</translation>
    </message>
    <message>
        <source>The usual one: $OCIO, %1</source>
        <translation>L’habituelle : $OCIO, %1</translation>
    </message>
    <message>
        <source>The usual one: Daylark's own</source>
        <translation>L’habituelle : celle de Daylark</translation>
    </message>
    <message>
        <source>There Are No Missing Files</source>
        <translation>Il ne manque aucun fichier</translation>
    </message>
    <message>
        <source>There is no “%1”.</source>
        <translation>« %1 » n’existe pas.</translation>
    </message>
    <message>
        <source>there is no other place</source>
        <translation>il n'y a pas d'autre endroit</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>ce fichier n'existe pas</translation>
    </message>
    <message>
        <source>These are no two different numbers. Black and white, such as 0, 100; nothing for what the picture reaches over:</source>
        <translation>Ce ne sont pas deux nombres différents. Noir et blanc, comme 0, 100 ; rien pour l'étendue de l'image :</translation>
    </message>
    <message>
        <source>This can't be undone</source>
        <translation>Cette action est définitive</translation>
    </message>
    <message>
        <source>This file can not be read.
Please check you have correct file permissions.</source>
        <translation>Ce fichier est illisible.
Vérifiez les droits d'accès.</translation>
    </message>
    <message>
        <source>This file may have been renamed or deleted.</source>
        <translation>Ce fichier a peut-être été renommé ou supprimé.</translation>
    </message>
    <message>
        <source>This session only</source>
        <translation>Cette session seulement</translation>
    </message>
    <message>
        <source>This smartlist has no rules yet.
Smartlist Rules... in its menu gives it some.</source>
        <translation>Cette smartlist n'a pas encore de règles.
« Règles de la smartlist... » dans son menu en ajoute.</translation>
    </message>
    <message>
        <source>This text is too long to be shown: its beginning, to be read only</source>
        <translation>Texte trop long : son début, en lecture seule</translation>
    </message>
    <message>
        <source>&amp;Thumbnail</source>
        <translation>&amp;Vignette</translation>
    </message>
    <message>
        <source>Thumbnail</source>
        <translation>Vignette</translation>
    </message>
    <message>
        <source>Thumbnail: %1</source>
        <translation>Vignette : %1</translation>
    </message>
    <message>
        <source>&amp;Thumbnails</source>
        <translation>&amp;Vignettes</translation>
    </message>
    <message>
        <source>Thumbnails show the</source>
        <translation>Les vignettes montrent</translation>
    </message>
    <message>
        <source>Tile size</source>
        <translation>Taille des vignettes</translation>
    </message>
    <message>
        <source>Timecode</source>
        <translation>Timecode</translation>
    </message>
    <message>
        <source>&amp;Timecode on Picture</source>
        <translation>&amp;Timecode sur l'image</translation>
    </message>
    <message>
        <source>Timecode stands</source>
        <translation>Le timecode est</translation>
    </message>
    <message>
        <source>Too many playlists selected</source>
        <translation>Trop de playlists choisies</translation>
    </message>
    <message>
        <source>&amp;Trim Handles</source>
        <translation>Rogner les poi&amp;gnées</translation>
    </message>
    <message>
        <source>Trim handles</source>
        <translation>Rogner les poignées</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Two numbers, such as 0, 100; nothing for what the picture reaches over:</source>
        <translation>Deux nombres, comme 0, 100 ; rien pour l'étendue de l'image :</translation>
    </message>
    <message>
        <source>Underline (Ctrl+U)</source>
        <translation>Souligné (Ctrl+U)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>Annuler : %1</translation>
    </message>
    <message>
        <source>Unflagged</source>
        <translation>Sans drapeau</translation>
    </message>
    <message>
        <source>Unmute All Bookmarks</source>
        <translation>Réactiver tous les repères</translation>
    </message>
    <message>
        <source>Unmute Bookmark</source>
        <translation>Réactiver le repère</translation>
    </message>
    <message>
        <source>Unmute Bookmarks</source>
        <translation>Réactiver les repères</translation>
    </message>
    <message>
        <source>Until Daylark is closed; at the next start it is First Frame again</source>
        <translation>Jusqu'à la fermeture de Daylark ; au démarrage suivant, de nouveau « Première image »</translation>
    </message>
    <message>
        <source>Untitled Session</source>
        <translation>Session sans nom</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Mettre à jour</translation>
    </message>
    <message>
        <source>&amp;Update File Paths</source>
        <translation>Mettre à &amp;jour les chemins</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Prendre</translation>
    </message>
    <message>
        <source>Use "Panels &gt; Save Panel Layout" to save the current layout.</source>
        <translation>« Panneaux &gt; Enregistrer la disposition » enregistre l'actuelle.</translation>
    </message>
    <message>
        <source>Use "Panels &gt; Save Panels Layout" to save the current layout.</source>
        <translation>« Panneaux &gt; Enregistrer la disposition » enregistre l'actuelle.</translation>
    </message>
    <message>
        <source>User Defined</source>
        <translation>Personnel</translation>
    </message>
    <message>
        <source>Vectorscope</source>
        <translation>Vecteurscope</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Vue</translation>
    </message>
    <message>
        <source>View: %1</source>
        <translation>Vue : %1</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Visionneuse</translation>
    </message>
    <message>
        <source>Viewer &amp;Options</source>
        <translation>&amp;Options</translation>
    </message>
    <message>
        <source>Viewer Options</source>
        <translation>Options de la visionneuse</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Volume %1 %</source>
        <translation>Volume %1 %</translation>
    </message>
    <message>
        <source>Waveform</source>
        <translation>Forme d'onde</translation>
    </message>
    <message>
        <source>What is not written</source>
        <translation>Ce qui n'est pas écrit</translation>
    </message>
    <message>
        <source>What it is compared with</source>
        <translation>À quoi elle compare</translation>
    </message>
    <message>
        <source>what stands there is no file</source>
        <translation>ce qui s'y trouve n'est pas un fichier</translation>
    </message>
    <message>
        <source>What the rule looks at</source>
        <translation>Ce que regarde la règle</translation>
    </message>
    <message>
        <source>Whatever comes into its folder</source>
        <translation>Quoi qu'il arrive dans son dossier</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Molette</translation>
    </message>
    <message>
        <source>When drawings are shown</source>
        <translation>Quand montrer les dessins</translation>
    </message>
    <message>
        <source>Where a movie starts</source>
        <translation>Où débute un clip</translation>
    </message>
    <message>
        <source>Where neither a run's pictures nor a person say it</source>
        <translation>Où ni les images d’une suite ni personne ne le dit</translation>
    </message>
    <message>
        <source>Where neither their pictures nor a person say it</source>
        <translation>Quand ni les images ni personne ne le dit</translation>
    </message>
    <message>
        <source>Where nobody gave one</source>
        <translation>Quand personne n'en a donné</translation>
    </message>
    <message>
        <source>Where the timecode stands</source>
        <translation>Où est le timecode</translation>
    </message>
    <message>
        <source>Which items are shown</source>
        <translation>Quels éléments sont affichés</translation>
    </message>
    <message>
        <source>Which scope is shown</source>
        <translation>Le scope affiché</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Blanc</translation>
    </message>
    <message>
        <source>&amp;Wider Tool</source>
        <translation>Outil plus &amp;large</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Largeur</translation>
    </message>
    <message>
        <source>Width in pixels of the movie ([ and ])</source>
        <translation>Largeur en pixels du clip ([ et ])</translation>
    </message>
    <message>
        <source>Width of the tool</source>
        <translation>Largeur de l'outil</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>Fe&amp;nêtre</translation>
    </message>
    <message>
        <source>Window Size 1:1 (Actual Size)</source>
        <translation>Fenêtre 1:1 (taille réelle)</translation>
    </message>
    <message>
        <source>Window Size 1:2 (Half Size)</source>
        <translation>Fenêtre 1:2 (moitié)</translation>
    </message>
    <message>
        <source>Window Size 1:3 (Third Size)</source>
        <translation>Fenêtre 1:3 (tiers)</translation>
    </message>
    <message>
        <source>With Bookmarks</source>
        <translation>Avec repères</translation>
    </message>
    <message>
        <source>With bookmarks</source>
        <translation>Avec les repères</translation>
    </message>
    <message>
        <source>With Colour Correction</source>
        <translation>Avec étalonnage</translation>
    </message>
    <message>
        <source>With Drawing Tools</source>
        <translation>Avec les outils</translation>
    </message>
    <message>
        <source>With Drawings</source>
        <translation>Avec dessins</translation>
    </message>
    <message>
        <source>With Notes</source>
        <translation>Avec notes</translation>
    </message>
    <message>
        <source>Without Bookmarks</source>
        <translation>Sans repères</translation>
    </message>
    <message>
        <source>Without Colour Correction</source>
        <translation>Sans étalonnage</translation>
    </message>
    <message>
        <source>Without Drawings</source>
        <translation>Sans dessins</translation>
    </message>
    <message>
        <source>Without Notes</source>
        <translation>Sans notes</translation>
    </message>
    <message>
        <source>Would you like to Copy or Move these items?</source>
        <translation>Copier ou déplacer ces éléments ?</translation>
    </message>
    <message>
        <source>Would you like to Copy these items?</source>
        <translation>Copier ces éléments ?</translation>
    </message>
    <message>
        <source>&amp;Write Notes</source>
        <translation>É&amp;crire des notes</translation>
    </message>
    <message>
        <source>x %1   y %2</source>
        <translation>x %1   y %2</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Jaune</translation>
    </message>
    <message>
        <source>Your last changes are not in their place</source>
        <translation>Vos dernières modifications ne sont pas à leur place</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoom</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Zoom at the pointer</source>
        <translation>Zoom au pointeur</translation>
    </message>
    <message>
        <source>Zoom at the pointer by Shift and the wheel</source>
        <translation>Zoomer au pointeur par Maj et molette</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Zoom avant</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message>
        <source>Zoom: %1 % of the viewer's width</source>
        <translation>Zoom : %1 % de la largeur</translation>
    </message>
    <message>
        <source>Zoom: fits the viewer</source>
        <translation>Zoom : ajusté</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>« %1 »</translation>
    </message>
    <message>
        <source>“%1” already exists.</source>
        <translation>« %1 » existe déjà.</translation>
    </message>
    <message>
        <source>“%1” gets the key; the other loses it</source>
        <translation>« %1 » prend la touche ; l'autre la perd</translation>
    </message>
</context>
</TS>
