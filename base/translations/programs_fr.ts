<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>frames</name>
    <message>
        <source>%L1 [-W%2]</source>
        <translation>%1 [-W%2]</translation>
    </message>
    <message>
        <source>%1: error: %L2</source>
        <translation>%1: erreur : %2</translation>
    </message>
    <message>
        <source>%1: warning: %L2</source>
        <translation>%1: avertissement : %2</translation>
    </message>
    <message>
        <source>%1: note: %L2</source>
        <translation>%1: note : %2</translation>
    </message>
    <message>
        <source>module &quot;%1&quot;: %L2</source>
        <translation>module « %1 » : %2</translation>
    </message>
    <message>
        <source>instant %1: %L2</source>
        <translation>instant %1 : %2</translation>
    </message>
    <message>
        <source>%L1; did you mean &quot;%2&quot;?</source>
        <translation>%1 ; vouliez-vous dire « %2 » ?</translation>
    </message>
    <message>
        <source>-%1: character %2: %L3</source>
        <translation>-%1 : caractère %2 : %3</translation>
    </message>
    <message>
        <source>character %1: %L2</source>
        <translation>caractère %1 : %2</translation>
    </message>
    <message>
        <source>-%1: %L2</source>
        <translation>-%1 : %2</translation>
    </message>
    <message>
        <source>refused: %L1</source>
        <translation>refusé : %1</translation>
    </message>
    <message>
        <source>no: %L1</source>
        <translation>non : %1</translation>
    </message>
    <message>
        <source>stopped: %L1</source>
        <translation>arrêté : %1</translation>
    </message>
    <message>
        <source>**%1**: %L2</source>
        <translation>**%1** : %2</translation>
    </message>
</context>
<context>
    <name>sentences</name>
    <message>
        <source>out of memory</source>
        <translation>mémoire épuisée</translation>
    </message>
    <message>
        <source>stopped by an unknown fault</source>
        <translation>arrêté par une défaillance inconnue</translation>
    </message>
    <message>
        <source>internal fault; --verbose shows what the library tells</source>
        <translation>défaillance interne ; --verbose montre ce que dit la bibliothèque</translation>
    </message>
    <message>
        <source>more variables than a module can have</source>
        <translation>plus de variables qu’un module ne peut en avoir</translation>
    </message>
    <message>
        <source>a signal depends on itself in one instant</source>
        <translation>un signal dépend de lui-même dans un même instant</translation>
    </message>
    <message>
        <source>an equation has more products than can be written</source>
        <translation>une équation a plus de produits qu’on n’en peut écrire</translation>
    </message>
    <message>
        <source>a fault without a reason</source>
        <translation>une défaillance sans motif</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>refusé</translation>
    </message>
    <message>
        <source>is read here, and would be overwritten</source>
        <translation>est lu ici, et serait écrasé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is read here, and would be overwritten</source>
        <translation>« %1 » est lu ici, et serait écrasé</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>ne peut pas être écrit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be written</source>
        <translation>« %1 » ne peut pas être écrit</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 ne peut pas être écrit</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>ne peut pas être lu</translation>
    </message>
    <message>
        <source>%1: cannot be read</source>
        <translation>%1 : ne peut pas être lu</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 ne peut pas être lu</translation>
    </message>
    <message>
        <source>cannot be read to its end</source>
        <translation>ne peut pas être lu jusqu’à la fin</translation>
    </message>
    <message>
        <source>cannot be opened</source>
        <translation>ne peut pas être ouvert</translation>
    </message>
    <message>
        <source>%1: cannot open</source>
        <translation>%1 : ne peut pas être ouvert</translation>
    </message>
    <message>
        <source>does not exist</source>
        <translation>n’existe pas</translation>
    </message>
    <message>
        <source>is a directory</source>
        <translation>est un dossier</translation>
    </message>
    <message>
        <source>is a folder</source>
        <translation>est un dossier</translation>
    </message>
    <message>
        <source>is a folder, not source text</source>
        <translation>est un dossier, non un texte source</translation>
    </message>
    <message>
        <source>is a folder, not a trace</source>
        <translation>est un dossier, non une trace</translation>
    </message>
    <message>
        <source>is a folder, not a file of stimuli</source>
        <translation>est un dossier, non un fichier de stimuli</translation>
    </message>
    <message>
        <source>cannot be read as a folder</source>
        <translation>ne peut pas être lu comme dossier</translation>
    </message>
    <message>
        <source>holds no file *.stimuli</source>
        <translation>ne contient aucun fichier *.stimuli</translation>
    </message>
    <message>
        <source>the line is longer than 16 MiB</source>
        <translation>la ligne dépasse 16 Mio</translation>
    </message>
    <message>
        <source>the standard output cannot be written</source>
        <translation>la sortie standard ne peut pas être écrite</translation>
    </message>
    <message>
        <source>the trace cannot be written</source>
        <translation>la trace ne peut pas être écrite</translation>
    </message>
    <message>
        <source>the library cannot go on with this module</source>
        <translation>la bibliothèque ne peut pas continuer avec ce module</translation>
    </message>
    <message>
        <source>the compiler cannot go on with this module</source>
        <translation>le compilateur ne peut pas continuer avec ce module</translation>
    </message>
    <message>
        <source>no folder for a temporary file can be made</source>
        <translation>aucun dossier ne peut être créé pour un fichier temporaire</translation>
    </message>
    <message>
        <source>a temporary file cannot be written</source>
        <translation>un fichier temporaire ne peut pas être écrit</translation>
    </message>
    <message>
        <source>the program vcd2fst (of gtkwave) makes this format, and is missing</source>
        <translation>ce format est produit par le programme vcd2fst (de gtkwave), qui manque</translation>
    </message>
    <message>
        <source>vcd2fst failed</source>
        <translation>vcd2fst a échoué</translation>
    </message>
    <message>
        <source>no display can be opened</source>
        <translation>aucun écran ne peut être ouvert</translation>
    </message>
    <message>
        <source>MODULE: is required</source>
        <translation>MODULE : est obligatoire</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of: %2</source>
        <translation>« %1 » n’est pas parmi : %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of:%2</source>
        <translation>« %1 » n’est pas parmi :%2</translation>
    </message>
    <message>
        <source>goes with --equiv</source>
        <translation>va avec --equiv</translation>
    </message>
    <message>
        <source>is for source text</source>
        <translation>vaut pour des textes sources</translation>
    </message>
    <message>
        <source>compares two modules</source>
        <translation>compare deux modules</translation>
    </message>
    <message>
        <source>takes no files</source>
        <translation>ne prend pas de fichiers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; ends neither in .zu nor in .zuc, nor is it a netlist</source>
        <translation>« %1 » ne finit ni par .zu ni par .zuc, et n’est pas une netlist</translation>
    </message>
    <message>
        <source>goes with --fmt</source>
        <translation>va avec --fmt</translation>
    </message>
    <message>
        <source>lays source text (.zu) out</source>
        <translation>met en page des textes sources (.zu)</translation>
    </message>
    <message>
        <source>wants one file</source>
        <translation>demande un seul fichier</translation>
    </message>
    <message>
        <source>wants one compiled module (.zuc)</source>
        <translation>demande un seul module compilé (.zuc)</translation>
    </message>
    <message>
        <source>wants an expression</source>
        <translation>demande une expression</translation>
    </message>
    <message>
        <source>stands beside neither --equiv nor --eval</source>
        <translation>ne va ni avec --equiv ni avec --eval</translation>
    </message>
    <message>
        <source>wants one file, and no other proofs</source>
        <translation>demande un seul fichier, et aucune autre preuve</translation>
    </message>
    <message>
        <source>names one file, and there are several modules</source>
        <translation>ne nomme qu’un fichier, et il y a plusieurs modules</translation>
    </message>
    <message>
        <source>goes with --dot or --svg</source>
        <translation>va avec --dot ou --svg</translation>
    </message>
    <message>
        <source>is told by the results that --merge reads</source>
        <translation>est déjà dit par les résultats que --merge lit</translation>
    </message>
    <message>
        <source>wants a number, or --stimuli a folder in its place</source>
        <translation>demande un nombre, ou à sa place --stimuli un dossier</translation>
    </message>
    <message>
        <source>is of random runs: --runs</source>
        <translation>concerne les exécutions aléatoires : --runs</translation>
    </message>
    <message>
        <source>is told the module by the debugger</source>
        <translation>reçoit le module du débogueur</translation>
    </message>
    <message>
        <source>takes the place of stimuli</source>
        <translation>prend la place des stimuli</translation>
    </message>
    <message>
        <source>needs a file of stimuli</source>
        <translation>a besoin d’un fichier de stimuli</translation>
    </message>
    <message>
        <source>%1 is no number: %2</source>
        <translation>%1 n’est pas un nombre : %2</translation>
    </message>
    <message>
        <source>neither SLURM_ARRAY_TASK_ID nor JOB_COMPLETION_INDEX is set in the environment</source>
        <translation>ni SLURM_ARRAY_TASK_ID ni JOB_COMPLETION_INDEX ne figure dans l’environnement</translation>
    </message>
    <message>
        <source>the environment does not tell of how many: auto/N does</source>
        <translation>l’environnement ne dit pas le nombre total : auto/N le donne</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither K/N nor auto</source>
        <translation>« %1 » n’est ni K/N ni auto</translation>
    </message>
    <message>
        <source>there is no shard %1 of %2: they count from 1</source>
        <translation>il n’y a pas de partie %1 sur %2 : on les compte à partir de 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not begin with an input's name and &quot;=&quot;</source>
        <translation>« %1 » ne commence pas par le nom d’une entrée suivi de « = »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no probability from 0 to 1</source>
        <translation>« %1 » n’est pas une probabilité de 0 à 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not NAME@INSTANT, with an instant from 1 on</source>
        <translation>« %1 » n’a pas la forme NAME@INSTANT, avec un instant compté à partir de 1</translation>
    </message>
    <message>
        <source>the run has no instant %1</source>
        <translation>l’exécution n’a pas d’instant %1</translation>
    </message>
    <message>
        <source>in none of %1 instants holds %2</source>
        <translation>à aucun des %1 instants, %2 n’est vrai</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; carries values; give some: --values %2</source>
        <translation>l’entrée « %1 » porte des valeurs ; donnez-en : --values %2</translation>
    </message>
    <message>
        <source>a priority has no meaning here</source>
        <translation>une priorité n’a pas de sens ici</translation>
    </message>
    <message>
        <source>more than %1 products</source>
        <translation>plus de %1 produits</translation>
    </message>
    <message>
        <source>%1 holds several modules; --module names one</source>
        <translation>%1 contient plusieurs modules ; --module en choisit un</translation>
    </message>
    <message>
        <source>holds several modules; --module names one</source>
        <translation>contient plusieurs modules ; --module en choisit un</translation>
    </message>
    <message>
        <source>holds several modules; -o names one file</source>
        <translation>contient plusieurs modules ; -o ne nomme qu’un fichier</translation>
    </message>
    <message>
        <source>holds several modules; --module names the one to bench</source>
        <translation>contient plusieurs modules ; --module choisit celui du banc d’essai</translation>
    </message>
    <message>
        <source>the module is not finalised; finalise it first</source>
        <translation>le module n’est pas finalisé ; finalisez-le d’abord</translation>
    </message>
    <message>
        <source>the module is not finalised</source>
        <translation>le module n’est pas finalisé</translation>
    </message>
    <message>
        <source>no file holds a module &quot;%1&quot;</source>
        <translation>aucun fichier ne contient de module « %1 »</translation>
    </message>
    <message>
        <source>proofs are made of one module, and there are several files</source>
        <translation>une preuve porte sur un seul module, et il y a plusieurs fichiers</translation>
    </message>
    <message>
        <source>has no map of its source (tarn --map)</source>
        <translation>n’a pas de carte de sa source (tarn --map)</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; has no map of its source (tarn --map); its registers are drawn</source>
        <translation>le module « %1 » n’a pas de carte de sa source (tarn --map) ; ses registres sont dessinés</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; holds no automaton; its registers are drawn</source>
        <translation>le module « %1 » ne contient aucun automate ; ses registres sont dessinés</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; reaches more than %2 states or steps, too many to draw</source>
        <translation>le module « %1 » atteint plus de %2 états ou pas : trop pour un dessin</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; has %2 registers, too many to draw</source>
        <translation>le module « %1 » a %2 registres : trop pour un dessin</translation>
    </message>
    <message>
        <source>belongs to another text of the module, and is not used (tarn --map writes it anew)</source>
        <translation>appartient à un autre texte du module, et n’est pas utilisée (tarn --map la récrit)</translation>
    </message>
    <message>
        <source>is no map of a source text</source>
        <translation>n’est pas la carte d’un texte source</translation>
    </message>
    <message>
        <source>the map is of another module, %1</source>
        <translation>la carte est celle d’un autre module, %1</translation>
    </message>
    <message>
        <source>%1 has changed since the module was compiled</source>
        <translation>%1 a changé depuis la compilation du module</translation>
    </message>
    <message>
        <source>holds no instant</source>
        <translation>ne contient aucun instant</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no output; the bench does not look at it</source>
        <translation>« %1 » n’est pas une sortie ; le banc d’essai ne la regarde pas</translation>
    </message>
    <message>
        <source>run it: %1</source>
        <translation>à lancer ainsi : %1</translation>
    </message>
    <message>
        <source>its properties cannot be written: %L1</source>
        <translation>ses propriétés ne peuvent pas être écrites : %1</translation>
    </message>
    <message>
        <source>has values, which your own functions give; use --bench</source>
        <translation>a des valeurs, que donnent vos propres fonctions ; utilisez --bench</translation>
    </message>
    <message>
        <source>no folder can be made</source>
        <translation>aucun dossier ne peut être créé</translation>
    </message>
    <message>
        <source>not installed</source>
        <translation>pas installé</translation>
    </message>
    <message>
        <source>the tool refuses it</source>
        <translation>l’outil le refuse</translation>
    </message>
    <message>
        <source>target</source>
        <translation>cible</translation>
    </message>
    <message>
        <source>tool and version</source>
        <translation>outil et version</translation>
    </message>
    <message>
        <source>instants  agreed</source>
        <translation>instants  accord</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>oui</translation>
    </message>
    <message>
        <source>module %1: %2 inputs, %3 outputs, %4 locals, %5 registers, %6 equations, %7 nodes made, %8 levels</source>
        <translation>module %1 : %2 entrées, %3 sorties, %4 locaux, %5 registres, %6 équations, %7 nœuds créés, %8 niveaux</translation>
    </message>
    <message>
        <source>read %1</source>
        <translation>lecture de %1</translation>
    </message>
    <message>
        <source>compile %1</source>
        <translation>compilation de %1</translation>
    </message>
    <message>
        <source>finalise %1</source>
        <translation>finalisation de %1</translation>
    </message>
    <message>
        <source>write %1</source>
        <translation>écriture de %1</translation>
    </message>
    <message>
        <source>settle the cycles of %1</source>
        <translation>résolution des cycles de %1</translation>
    </message>
    <message>
        <source>%1 statements</source>
        <translation>%1 instructions</translation>
    </message>
    <message>
        <source>this text would mean something else with other blanks</source>
        <translation>ce texte aurait un autre sens avec d’autres blancs</translation>
    </message>
    <message>
        <source>this character begins no token</source>
        <translation>ce caractère ne commence aucun mot du langage</translation>
    </message>
    <message>
        <source>this bracket closes none</source>
        <translation>cette parenthèse n’en ferme aucune</translation>
    </message>
    <message>
        <source>this bracket is not closed</source>
        <translation>cette parenthèse n’est pas fermée</translation>
    </message>
    <message>
        <source>&quot;instant&quot; is compared with a number: instant &gt;= 7</source>
        <translation>« instant » se compare à un nombre : instant &gt;= 7</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no signal of the module</source>
        <translation>« %1 » n’est pas un signal du module</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no signal of %2</source>
        <translation>« %1 » n’est pas un signal de %2</translation>
    </message>
    <message>
        <source>a signal's value is compared by &quot;=&quot; alone</source>
        <translation>la valeur d’un signal ne se compare que par « = »</translation>
    </message>
    <message>
        <source>a &quot; without its end</source>
        <translation>un &quot; ouvrant sans &quot; fermant</translation>
    </message>
    <message>
        <source>a value is awaited behind &quot;=&quot;</source>
        <translation>une valeur est attendue après « = »</translation>
    </message>
    <message>
        <source>nested too deep</source>
        <translation>imbrication trop profonde</translation>
    </message>
    <message>
        <source>the expression ends too early</source>
        <translation>l’expression finit trop tôt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand here</source>
        <translation>« %1 » ne peut pas figurer ici</translation>
    </message>
    <message>
        <source>a signal is awaited twice on the line: &quot;%1&quot;</source>
        <translation>un signal est attendu deux fois sur la ligne : « %1 »</translation>
    </message>
    <message>
        <source>an input stands twice on the line: &quot;%1&quot;</source>
        <translation>une entrée figure deux fois sur la ligne : « %1 »</translation>
    </message>
    <message>
        <source>unknown state &quot;%1&quot; in &quot;%2&quot;: one, zero, top, bottom or unknown is expected</source>
        <translation>état inconnu « %1 » dans « %2 » : one, zero, top, bottom ou unknown est attendu</translation>
    </message>
    <message>
        <source>unknown state &quot;%1&quot; in &quot;%2&quot;: one, zero, top or bottom is expected</source>
        <translation>état inconnu « %1 » dans « %2 » : one, zero, top ou bottom est attendu</translation>
    </message>
    <message>
        <source>the module has no input &quot;%1&quot;</source>
        <translation>le module n’a pas d’entrée « %1 »</translation>
    </message>
    <message>
        <source>only an input in state one carries a value: &quot;%1&quot;</source>
        <translation>seule une entrée dans l’état one porte une valeur : « %1 »</translation>
    </message>
    <message>
        <source>the module shows no signal &quot;%1&quot;</source>
        <translation>le module ne montre aucun signal « %1 »</translation>
    </message>
    <message>
        <source>a signal that is not awaited has no state and no value: &quot;%1&quot;</source>
        <translation>un signal qui n’est pas attendu n’a ni état ni valeur : « %1 »</translation>
    </message>
    <message>
        <source>only a signal in state one carries a value: &quot;%1&quot;</source>
        <translation>seul un signal dans l’état one porte une valeur : « %1 »</translation>
    </message>
    <message>
        <source>expected not %1, is %L2</source>
        <translation>attendu : non %1, observé : %2</translation>
    </message>
    <message>
        <source>expected %1, is %L2</source>
        <translation>attendu : %1, observé : %2</translation>
    </message>
    <message>
        <source>the trace ends before this instant</source>
        <translation>la trace finit avant cet instant</translation>
    </message>
    <message>
        <source>the run ends before this instant of the trace</source>
        <translation>l’exécution finit avant cet instant de la trace</translation>
    </message>
    <message>
        <source>the trace has instant %1 here</source>
        <translation>la trace a ici l’instant %1</translation>
    </message>
    <message>
        <source>the module shows no &quot;%1&quot; among its %L2</source>
        <translation>le module ne montre pas « %1 » parmi ses %2</translation>
    </message>
    <message>
        <source>is no object of a trace</source>
        <translation>n’est pas un objet de trace</translation>
    </message>
    <message>
        <source>%1 more differences</source>
        <translation>encore %1 différences</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; is present without a value</source>
        <translation>la sortie « %1 » est présente sans valeur</translation>
    </message>
    <message>
        <source>server %1: &quot;%2&quot; came, while true or false was awaited</source>
        <translation>serveur %1 : « %2 » est venu, alors que true ou false était attendu</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is read and has no value</source>
        <translation>« %1 » est lu et n’a pas de valeur</translation>
    </message>
    <message>
        <source>a value with a comma goes to the server: %1</source>
        <translation>une valeur qui contient une virgule part au serveur : %1</translation>
    </message>
    <message>
        <source>a reply of 1023 bytes or more to the request: %1</source>
        <translation>une réponse de 1023 octets ou plus à la requête : %1</translation>
    </message>
    <message>
        <source>no evaluation server is given, while the reply to &quot;%1&quot; was awaited</source>
        <translation>aucun serveur d’évaluation n’est donné, alors que la réponse à « %1 » était attendue</translation>
    </message>
    <message>
        <source>server %1: %L2, while %L3 was awaited</source>
        <translation>serveur %1 : %2 ; attendu : %3</translation>
    </message>
    <message>
        <source>is of another module, %1</source>
        <translation>est celui d’un autre module, %1</translation>
    </message>
    <message>
        <source>names a signal that the module has not, %1</source>
        <translation>nomme un signal que le module n’a pas, %1</translation>
    </message>
    <message>
        <source>is no file of coverage</source>
        <translation>n’est pas un fichier de couverture</translation>
    </message>
    <message>
        <source>coverage of %1 in %2 instants</source>
        <translation>couverture de %1 en %2 instants</translation>
    </message>
    <message>
        <source>coverage of %1 in %2 runs</source>
        <translation>couverture de %1 en %2 exécutions</translation>
    </message>
    <message>
        <source>signals seen present and not: %1 of %2</source>
        <translation>signaux vus présents et absents : %1 sur %2</translation>
    </message>
    <message>
        <source>never present: %L1</source>
        <translation>jamais présent : %1</translation>
    </message>
    <message>
        <source>always present: %L1</source>
        <translation>toujours présent : %1</translation>
    </message>
    <message>
        <source>register states: %1, steps between them: %2</source>
        <translation>états des registres : %1, pas entre eux : %2</translation>
    </message>
    <message>
        <source>statements, states, transitions: no map of the source beside the module (tarn --map)</source>
        <translation>instructions, états, transitions : pas de carte de la source à côté du module (tarn --map)</translation>
    </message>
    <message>
        <source>statements reached: %1 of %2</source>
        <translation>instructions atteintes : %1 sur %2</translation>
    </message>
    <message>
        <source>states of automata reached: %1 of %2</source>
        <translation>états d’automates atteints : %1 sur %2</translation>
    </message>
    <message>
        <source>states reached: %1 of %2</source>
        <translation>états atteints : %1 sur %2</translation>
    </message>
    <message>
        <source>transitions reached: %1 of %2</source>
        <translation>transitions atteintes : %1 sur %2</translation>
    </message>
    <message>
        <source>never: %1</source>
        <translation>jamais : %1</translation>
    </message>
    <message>
        <source>no module has been launched</source>
        <translation>aucun module n’a été lancé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not known</source>
        <translation>« %1 » n’est pas connu</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no input</source>
        <translation>« %1 » n’est pas une entrée</translation>
    </message>
    <message>
        <source>an input is one, zero, top or bottom</source>
        <translation>une entrée est one, zero, top ou bottom</translation>
    </message>
    <message>
        <source>Inputs</source>
        <translation>Entrées</translation>
    </message>
    <message>
        <source>Outputs</source>
        <translation>Sorties</translation>
    </message>
    <message>
        <source>Locals</source>
        <translation>Locaux</translation>
    </message>
    <message>
        <source>Registers</source>
        <translation>Registres</translation>
    </message>
    <message>
        <source>started</source>
        <translation>démarrée</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>attend</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>terminée</translation>
    </message>
    <message>
        <source>killed</source>
        <translation>interrompue</translation>
    </message>
    <message>
        <source>is no result of a campaign</source>
        <translation>n’est pas le résultat d’une campagne</translation>
    </message>
    <message>
        <source>is of another campaign: &quot;%1&quot; differs</source>
        <translation>est d’une autre campagne : « %1 » diffère</translation>
    </message>
    <message>
        <source>is of another campaign</source>
        <translation>est d’une autre campagne</translation>
    </message>
    <message>
        <source>is a shard of %1, and the first is one of %2</source>
        <translation>est une partie d’une campagne en %1, et la première est d’une campagne en %2</translation>
    </message>
    <message>
        <source>is shard %1, which stands here twice</source>
        <translation>est la partie %1, qui figure ici deux fois</translation>
    </message>
    <message>
        <source>of %1 shards, %L2 is missing</source>
        <translation>sur %1 parties, il manque la partie %2</translation>
    </message>
    <message>
        <source>of %1 shards, %L2 are missing</source>
        <translation>sur %1 parties, il manque les parties %2</translation>
    </message>
    <message>
        <source>does not count what the first does</source>
        <translation>ne compte pas ce que compte le premier</translation>
    </message>
    <message>
        <source>in a campaign, inputs are one or zero</source>
        <translation>dans une campagne, les entrées sont one ou zero</translation>
    </message>
    <message>
        <source>in a campaign, !set is raised in the first instant alone</source>
        <translation>dans une campagne, !set n’est levé qu’au premier instant</translation>
    </message>
    <message>
        <source>in a campaign, no value is awaited: %1</source>
        <translation>dans une campagne, aucune valeur n’est attendue : %1</translation>
    </message>
    <message>
        <source>%1: by the stimuli: fails in %2 of %3 runs, first in %4, instant %5</source>
        <translation>%1 : selon les stimuli : échoue dans %2 exécutions sur %3, d’abord dans %4, instant %5</translation>
    </message>
    <message>
        <source>%1: fails in %2 of %3 runs, first in run %4, instant %5</source>
        <translation>%1 : échoue dans %2 exécutions sur %3, d’abord dans l’exécution %4, instant %5</translation>
    </message>
    <message>
        <source>%1: fails in %2 of %3 runs, first in %4, instant %5</source>
        <translation>%1 : échoue dans %2 exécutions sur %3, d’abord dans %4, instant %5</translation>
    </message>
    <message>
        <source>%1 has the %L2, %3 has not</source>
        <translation>%1 a %2, %3 ne l’a pas</translation>
    </message>
    <message>
        <source>%1: not known: %L2</source>
        <translation>%1 : indécis : %2</translation>
    </message>
    <message>
        <source>%1: never reached: %L2</source>
        <translation>%1 : jamais atteint : %2</translation>
    </message>
    <message>
        <source>%1: holds: %L2</source>
        <translation>%1 : vrai : %2</translation>
    </message>
    <message>
        <source>%1: reached in instant %2</source>
        <translation>%1 : atteint à l’instant %2</translation>
    </message>
    <message>
        <source>%1: fails in instant %2</source>
        <translation>%1 : échoue à l’instant %2</translation>
    </message>
    <message>
        <source>%1: reached in instant %2; whether earlier, too, is not known</source>
        <translation>%1 : atteint à l’instant %2 ; on ne sait pas si c’est possible plus tôt</translation>
    </message>
    <message>
        <source>%1: fails in instant %2; whether earlier, too, is not known</source>
        <translation>%1 : échoue à l’instant %2 ; on ne sait pas si c’est possible plus tôt</translation>
    </message>
    <message>
        <source>%1 and %2 give the same outputs in every reachable instant</source>
        <translation>%1 et %2 donnent les mêmes sorties à tout instant accessible</translation>
    </message>
    <message>
        <source>%1 by the %2 rules and %3 by the %4 rules give the same outputs in every reachable instant</source>
        <translation>%1 selon les règles %2 et %3 selon les règles %4 donnent les mêmes sorties à tout instant accessible</translation>
    </message>
    <message>
        <source>%1 in %2 by the %3 rules only</source>
        <translation>%1 seulement dans %2 selon les règles %3</translation>
    </message>
    <message>
        <source>%1 in %2 only</source>
        <translation>%1 seulement dans %2</translation>
    </message>
    <message>
        <source>whether they differ earlier, too, is not known</source>
        <translation>on ne sait pas s’ils diffèrent plus tôt</translation>
    </message>
    <message>
        <source>not known within %1 seconds (--limit): no difference: %L2</source>
        <translation>indécis en %1 secondes (--limit) : aucune différence : %2</translation>
    </message>
    <message>
        <source>no difference: %L1</source>
        <translation>aucune différence : %1</translation>
    </message>
    <message>
        <source>not all was looked at</source>
        <translation>tout n’a pas été examiné</translation>
    </message>
    <message>
        <source>%1: in instant %2 this statement %L3 by the %4 rules, %L5 by the %6 rules</source>
        <translation>%1 : à l’instant %2, cette instruction %3 selon les règles %4, %5 selon les règles %6</translation>
    </message>
    <message>
        <source>%1: this statement %L2 in the last instant by both rules; what is emitted differs</source>
        <translation>%1 : cette instruction %2 au dernier instant selon les deux règles ; ce qui est émis diffère</translation>
    </message>
    <message>
        <source>random runs reach %1 of %2 statements, states and transitions: %L3, %L4</source>
        <translation>les exécutions aléatoires atteignent %1 des %2 instructions, états et transitions : %3, %4</translation>
    </message>
    <message>
        <source>what is written reaches %1 of %2 statements, states and transitions: %L3, %L4</source>
        <translation>ce qui est écrit atteint %1 des %2 instructions, états et transitions : %3, %4</translation>
    </message>
    <message>
        <source>never reached: %L1: %2</source>
        <translation>jamais atteint : %1 : %2</translation>
    </message>
    <message>
        <source>not known to be reached: %L1: %2</source>
        <translation>indécis : %1 : %2</translation>
    </message>
    <message>
        <source>of %1 of %2 pieces it is not known whether they are reached</source>
        <translation>pour %1 des %2 éléments, on ne sait pas s’ils sont atteints</translation>
    </message>
    <message>
        <source>states not counted</source>
        <translation>états non comptés</translation>
    </message>
    <message>
        <source>more than %1 reachable states</source>
        <translation>plus de %1 états accessibles</translation>
    </message>
    <message>
        <source>%1 reachable states</source>
        <translation>%1 états accessibles</translation>
    </message>
    <message>
        <source>no output changes after</source>
        <translation>aucune sortie ne change plus après</translation>
    </message>
    <message>
        <source>no run reaches this statement</source>
        <translation>aucune exécution n’atteint cette instruction</translation>
    </message>
    <message>
        <source>no run reaches this statement in %1</source>
        <translation>aucune exécution n’atteint cette instruction dans %1</translation>
    </message>
    <message>
        <source>no run reaches this state</source>
        <translation>aucune exécution n’atteint cet état</translation>
    </message>
    <message>
        <source>no run reaches this state in %1</source>
        <translation>aucune exécution n’atteint cet état dans %1</translation>
    </message>
    <message>
        <source>no run reaches this transition</source>
        <translation>aucune exécution n’atteint cette transition</translation>
    </message>
    <message>
        <source>no run reaches this transition in %1</source>
        <translation>aucune exécution n’atteint cette transition dans %1</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; is never present</source>
        <translation>la sortie « %1 » n’est jamais présente</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; is present in every instant</source>
        <translation>la sortie « %1 » est présente à chaque instant</translation>
    </message>
    <message>
        <source>the local &quot;%1&quot; is never present</source>
        <translation>le local « %1 » n’est jamais présent</translation>
    </message>
    <message>
        <source>the local &quot;%1&quot; is present in every instant</source>
        <translation>le local « %1 » est présent à chaque instant</translation>
    </message>
    <message>
        <source>the register &quot;%1&quot; is never present</source>
        <translation>le registre « %1 » n’est jamais présent</translation>
    </message>
    <message>
        <source>the register &quot;%1&quot; is present in every instant</source>
        <translation>le registre « %1 » est présent à chaque instant</translation>
    </message>
    <message>
        <source>no output changes from instant %1 on, whatever comes, after the run that the standard output tells</source>
        <translation>à partir de l’instant %1, aucune sortie ne change plus, quoi qu’il arrive, après l’exécution que donne la sortie standard</translation>
    </message>
    <message>
        <source>found in instant %1, looking for an earlier one: %L2</source>
        <translation>trouvé à l’instant %1, recherche d’un instant antérieur : %2</translation>
    </message>
    <message>
        <source>%1 signals correspond to others; %L2</source>
        <translation>%1 signaux correspondent à d’autres ; %2</translation>
    </message>
    <message>
        <source>not in the first %1 instants</source>
        <translation>pas dans les %1 premiers instants</translation>
    </message>
    <message>
        <source>not in the first %1 instant</source>
        <translation>pas dans les %1 premiers instants</translation>
    </message>
    <message>
        <source>no induction over %1 instants</source>
        <translation>pas d’induction sur %1 instants</translation>
    </message>
    <message>
        <source>no induction over %1 instant</source>
        <translation>pas d’induction sur %1 instant</translation>
    </message>
    <message>
        <source>induction over %1 instants</source>
        <translation>induction sur %1 instants</translation>
    </message>
    <message>
        <source>induction over %1 instant</source>
        <translation>induction sur %1 instant</translation>
    </message>
    <message>
        <source>an invariant of %1 clauses, found with %2 frames</source>
        <translation>un invariant de %1 clauses, trouvé avec %2 étages</translation>
    </message>
    <message>
        <source>an invariant of %1 clause, found with %2 frames</source>
        <translation>un invariant de %1 clause, trouvé avec %2 étages</translation>
    </message>
    <message>
        <source>%1 frames, %2 clauses</source>
        <translation>%1 étages, %2 clauses</translation>
    </message>
    <message>
        <source>all %1 states seen, the last in instant %2</source>
        <translation>les %1 états ont tous été vus, le dernier à l’instant %2</translation>
    </message>
    <message>
        <source>%1 states in %2 instants, then diagrams too large</source>
        <translation>%1 états en %2 instants, puis des diagrammes trop grands</translation>
    </message>
    <message>
        <source>%1 states in %2 instants</source>
        <translation>%1 états en %2 instants</translation>
    </message>
    <message>
        <source>diagrams too large</source>
        <translation>diagrammes trop grands</translation>
    </message>
    <message>
        <source>making diagrams</source>
        <translation>construction des diagrammes</translation>
    </message>
    <message>
        <source>%1 random instants without one</source>
        <translation>%1 instants aléatoires sans en trouver</translation>
    </message>
    <message>
        <source>walked over %1 instants</source>
        <translation>%1 instants parcourus</translation>
    </message>
    <message>
        <source>%L1; states: %L2</source>
        <translation>%1 ; états : %2</translation>
    </message>
    <message>
        <source>%L1; random runs: %L2</source>
        <translation>%1 ; exécutions aléatoires : %2</translation>
    </message>
    <message>
        <source>%L1; frames: %L2</source>
        <translation>%1 ; étages : %2</translation>
    </message>
    <message>
        <source>%L1; induction: %L2</source>
        <translation>%1 ; induction : %2</translation>
    </message>
    <message>
        <source>%L1; bounded search: %L2</source>
        <translation>%1 ; recherche bornée : %2</translation>
    </message>
    <message>
        <source>internal fault: the module does not run as was found</source>
        <translation>défaillance interne : le module ne s’exécute pas comme il a été trouvé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; comes from data</source>
        <translation>« %1 » vient de données</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is read before anything computes it</source>
        <translation>« %1 » est lu avant que rien ne le calcule</translation>
    </message>
    <message>
        <source>module %1 is not finalised</source>
        <translation>le module %1 n’est pas finalisé</translation>
    </message>
    <message>
        <source>module %1 carries values: %2</source>
        <translation>le module %1 porte des valeurs : %2</translation>
    </message>
    <message>
        <source>module %1 computes values</source>
        <translation>le module %1 calcule des valeurs</translation>
    </message>
    <message>
        <source>the number of an instant is no part of a property</source>
        <translation>le numéro d’un instant ne fait pas partie d’une propriété</translation>
    </message>
    <message>
        <source>values are no part of a property</source>
        <translation>les valeurs ne font pas partie d’une propriété</translation>
    </message>
    <message>
        <source>%1 is unknown: nothing that is known decides it</source>
        <translation>%1 est inconnu : rien de connu n’en décide</translation>
    </message>
    <message>
        <source>expected %L1</source>
        <translation>attendu : %1</translation>
    </message>
    <message>
        <source>expected %L1 after &quot;%2&quot;</source>
        <translation>attendu après « %2 » : %1</translation>
    </message>
    <message>
        <source>expected %L1, and the text ends here</source>
        <translation>attendu : %1, et le texte finit ici</translation>
    </message>
    <message>
        <source>expected %L1 after &quot;%2&quot;, and the text ends here</source>
        <translation>attendu après « %2 » : %1, et le texte finit ici</translation>
    </message>
    <message>
        <source>expected &quot;%1&quot; before %L2</source>
        <translation>attendu avant %2 : « %1 »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand here after &quot;%2&quot;</source>
        <translation>« %1 » ne peut pas figurer ici après « %2 »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a word of the language and cannot be a name</source>
        <translation>« %1 » est un mot du langage et ne peut pas être un nom</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no character of the language</source>
        <translation>« %1 » n’est pas un caractère du langage</translation>
    </message>
    <message>
        <source>a name begins with a letter, not with &quot;_&quot;</source>
        <translation>un nom commence par une lettre, non par « _ »</translation>
    </message>
    <message>
        <source>the text ends too early</source>
        <translation>le texte finit trop tôt</translation>
    </message>
    <message>
        <source>the text in quotes that begins here does not end</source>
        <translation>le texte entre guillemets qui commence ici ne finit pas</translation>
    </message>
    <message>
        <source>a comment needs a newline at its end</source>
        <translation>un commentaire doit finir par un saut de ligne</translation>
    </message>
    <message>
        <source>a carriage return cannot stand here; lines end with a newline alone</source>
        <translation>un retour chariot ne peut pas figurer ici ; les lignes finissent par un simple saut de ligne</translation>
    </message>
    <message>
        <source>a NUL byte cannot stand in source text</source>
        <translation>un octet nul ne peut pas figurer dans un texte source</translation>
    </message>
    <message>
        <source>a control character cannot stand in source text</source>
        <translation>un caractère de contrôle ne peut pas figurer dans un texte source</translation>
    </message>
    <message>
        <source>a character other than ASCII stands in quotes or comments only</source>
        <translation>un caractère hors ASCII ne peut figurer qu’entre guillemets ou dans un commentaire</translation>
    </message>
    <message>
        <source>statements are joined by &quot;&gt;&gt;&quot; or &quot;||&quot;, not by &quot;;&quot;</source>
        <translation>les instructions se joignent par « &gt;&gt; » ou « || », non par « ; »</translation>
    </message>
    <message>
        <source>an abort is &quot;weak abort&quot; or &quot;strong abort&quot;</source>
        <translation>un abort est « weak abort » ou « strong abort »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; comes too late: the order is Input:, Output:, Local:, Run:, each once</source>
        <translation>« %1 » vient trop tard : l’ordre est Input:, Output:, Local:, Run:, chacun une fois</translation>
    </message>
    <message>
        <source>&quot;{&quot; stands here</source>
        <translation>« { » se trouve ici</translation>
    </message>
    <message>
        <source>nested too deeply</source>
        <translation>imbrication trop profonde</translation>
    </message>
    <message>
        <source>expressions nested deeper than %1 levels</source>
        <translation>expressions imbriquées sur plus de %1 niveaux</translation>
    </message>
    <message>
        <source>statements nested deeper than %1 levels</source>
        <translation>instructions imbriquées sur plus de %1 niveaux</translation>
    </message>
    <message>
        <source>syntax error at &quot;%1&quot;: %L2</source>
        <translation>erreur de syntaxe à « %1 » : %2</translation>
    </message>
    <message>
        <source>syntax error at &quot;&quot;: %L1</source>
        <translation>erreur de syntaxe : %1</translation>
    </message>
    <message>
        <source>not expected here</source>
        <translation>inattendu ici</translation>
    </message>
    <message>
        <source>%1:PARSING ERROR: %L2 signal &quot;%3&quot; is unknown in main module!</source>
        <translation>%1 : « %3 » (%2) est inconnu dans le module principal</translation>
    </message>
    <message>
        <source>the text ends here</source>
        <translation>le texte finit ici</translation>
    </message>
    <message>
        <source>a NUL byte</source>
        <translation>un octet nul</translation>
    </message>
    <message>
        <source>a carriage return; lines end with a newline alone</source>
        <translation>un retour chariot ; les lignes finissent par un simple saut de ligne</translation>
    </message>
    <message>
        <source>in this text</source>
        <translation>dans ce texte</translation>
    </message>
    <message>
        <source>wait wants a number of 1 or more, not %1</source>
        <translation>wait demande un nombre supérieur ou égal à 1, non %1</translation>
    </message>
    <message>
        <source>repeat wants a number of 1 or more, not %1</source>
        <translation>repeat demande un nombre supérieur ou égal à 1, non %1</translation>
    </message>
    <message>
        <source>is a bad number for wait: %1</source>
        <translation>mauvais nombre pour wait : %1</translation>
    </message>
    <message>
        <source>is a bad number for repeat: %1</source>
        <translation>mauvais nombre pour repeat : %1</translation>
    </message>
    <message>
        <source>too many copies of one statement: %1</source>
        <translation>trop de copies d’une même instruction : %1</translation>
    </message>
    <message>
        <source>the constants of an equation are 0 and 1, not %1</source>
        <translation>les constantes d’une équation sont 0 et 1, non %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not declared</source>
        <translation>« %1 » n’est pas déclaré</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is declared twice</source>
        <translation>« %1 » est déclaré deux fois</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands twice</source>
        <translation>« %1 » figure deux fois</translation>
    </message>
    <message>
        <source>first declared here</source>
        <translation>déclaré ici la première fois</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is an input and cannot be emitted</source>
        <translation>« %1 » est une entrée et ne peut pas être émis</translation>
    </message>
    <message>
        <source>type &quot;%1&quot; is not declared</source>
        <translation>le type « %1 » n’est pas déclaré</translation>
    </message>
    <message>
        <source>method &quot;%1&quot; is not declared</source>
        <translation>la méthode « %1 » n’est pas déclarée</translation>
    </message>
    <message>
        <source>constant &quot;%1&quot; is not declared</source>
        <translation>la constante « %1 » n’est pas déclarée</translation>
    </message>
    <message>
        <source>constant &quot;%1&quot; is not declared; the value of the signal is #%2</source>
        <translation>la constante « %1 » n’est pas déclarée ; la valeur du signal s’écrit #%2</translation>
    </message>
    <message>
        <source>the literal %1 is not declared under Constant:</source>
        <translation>le littéral %1 n’est pas déclaré sous Constant:</translation>
    </message>
    <message>
        <source>two modules have the name &quot;%1&quot;</source>
        <translation>deux modules portent le nom « %1 »</translation>
    </message>
    <message>
        <source>two states have the name &quot;%1&quot;</source>
        <translation>deux états portent le nom « %1 »</translation>
    </message>
    <message>
        <source>the other one stands here</source>
        <translation>l’autre se trouve ici</translation>
    </message>
    <message>
        <source>the place of module &quot;%1&quot; is declared twice</source>
        <translation>l’emplacement du module « %1 » est déclaré deux fois</translation>
    </message>
    <message>
        <source>there is no module &quot;%1&quot; in %2</source>
        <translation>il n’y a pas de module « %1 » dans %2</translation>
    </message>
    <message>
        <source>%1 holds module %2</source>
        <translation>%1 contient le module %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is renamed twice</source>
        <translation>« %1 » est renommé deux fois</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of type %2, and &quot;%3&quot; of the called module of type %4</source>
        <translation>« %1 » est de type %2, et « %3 » du module appelé de type %4</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; has been finalised already</source>
        <translation>le module « %1 » a déjà été finalisé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no input or output of module &quot;%2&quot;</source>
        <translation>« %1 » n’est ni entrée ni sortie du module « %2 »</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; cannot feed the input &quot;%2&quot; of module &quot;%3&quot;; use a local</source>
        <translation>la sortie « %1 » ne peut pas alimenter l’entrée « %2 » du module « %3 » ; passez par un local</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; of module &quot;%2&quot; needs an input or local of that name here, or a renaming</source>
        <translation>l’entrée « %1 » du module « %2 » demande ici une entrée ou un local de ce nom, ou un renommage</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; cannot take the output &quot;%2&quot; of module &quot;%3&quot;</source>
        <translation>l’entrée « %1 » ne peut pas recevoir la sortie « %2 » du module « %3 »</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; of module &quot;%2&quot; needs an output or local of that name here, or a renaming</source>
        <translation>la sortie « %1 » du module « %2 » demande ici une sortie ou un local de ce nom, ou un renommage</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; gives its output &quot;%2&quot; no value, and &quot;%3&quot; needs one</source>
        <translation>le module « %1 » ne donne pas de valeur à sa sortie « %2 », et « %3 » en demande une</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; runs itself: %2</source>
        <translation>le module « %1 » s’exécute lui-même : %2</translation>
    </message>
    <message>
        <source>modules that run each other are nested too deeply here</source>
        <translation>les modules qui s’exécutent l’un l’autre sont ici trop profondément imbriqués</translation>
    </message>
    <message>
        <source>more than %1 signals with those of module &quot;%2&quot;</source>
        <translation>plus de %1 signaux avec ceux du module « %2 »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of type %2 and needs a value: %3</source>
        <translation>« %1 » est de type %2 et demande une valeur : %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; carries no value: it is declared without a type</source>
        <translation>« %1 » ne porte pas de valeur : il est déclaré sans type</translation>
    </message>
    <message>
        <source>the value of &quot;%1&quot; cannot be made of #%2 in the same instant</source>
        <translation>la valeur de « %1 » ne peut pas être faite de #%2 dans le même instant</translation>
    </message>
    <message>
        <source>an operator has operands of two types, %1 and %2</source>
        <translation>un opérateur a des opérandes de deux types, %1 et %2</translation>
    </message>
    <message>
        <source>&quot;-&quot; takes a value, and %L1</source>
        <translation>« - » prend une valeur, et %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes two values of one type: %L2, %L3</source>
        <translation>« %1 » prend deux valeurs d’un même type : %2, %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 argument, not %3</source>
        <translation>« %1 » prend %2 argument, non %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 arguments, not %3</source>
        <translation>« %1 » prend %2 arguments, non %3</translation>
    </message>
    <message>
        <source>%L1 is of type %2, and %L3</source>
        <translation>%1 est de type %2, et %3</translation>
    </message>
    <message>
        <source>%L1 takes a condition, and %L2</source>
        <translation>%1 prend une condition, et %2</translation>
    </message>
    <message>
        <source>a data expression of two types</source>
        <translation>une expression de données de deux types</translation>
    </message>
    <message>
        <source>data expression nested too deep</source>
        <translation>expression de données trop profondément imbriquée</translation>
    </message>
    <message>
        <source>data expression of over a million nodes</source>
        <translation>expression de données de plus d’un million de nœuds</translation>
    </message>
    <message>
        <source>the final state &quot;%1&quot; cannot have actions</source>
        <translation>l’état final « %1 » ne peut pas avoir d’actions</translation>
    </message>
    <message>
        <source>the final state &quot;%1&quot; cannot run a module</source>
        <translation>l’état final « %1 » ne peut pas exécuter de module</translation>
    </message>
    <message>
        <source>no transition can leave the final state &quot;%1&quot;</source>
        <translation>aucune transition ne peut quitter l’état final « %1 »</translation>
    </message>
    <message>
        <source>the normalterm-&gt; transition of state &quot;%1&quot; cannot have a trigger</source>
        <translation>la transition normalterm-&gt; de l’état « %1 » ne peut pas avoir de condition</translation>
    </message>
    <message>
        <source>two transitions of one kind and rank can leave state &quot;%1&quot; together; exclude their triggers or number them</source>
        <translation>deux transitions de même sorte et de même rang peuvent quitter ensemble l’état « %1 » ; rendez leurs conditions exclusives ou numérotez-les</translation>
    </message>
    <message>
        <source>two initial transitions can be taken together; exclude their triggers or number them</source>
        <translation>deux transitions initiales peuvent être prises ensemble ; rendez leurs conditions exclusives ou numérotez-les</translation>
    </message>
    <message>
        <source>two initial transitions &quot;%1&quot; can be taken together; exclude their triggers or number them</source>
        <translation>deux transitions initiales « %1 » peuvent être prises ensemble ; rendez leurs conditions exclusives ou numérotez-les</translation>
    </message>
    <message>
        <source>two transitions of one kind can leave state &quot;%1&quot; together, when %2</source>
        <translation>deux transitions de même sorte peuvent quitter ensemble l’état « %1 », quand %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; depends on itself in one instant: %2</source>
        <translation>« %1 » dépend de lui-même dans un même instant : %2</translation>
    </message>
    <message>
        <source>statements start each other in one instant: %1</source>
        <translation>des instructions se démarrent l’une l’autre dans un même instant : %1</translation>
    </message>
    <message>
        <source>equations depend on each other in one instant</source>
        <translation>des équations dépendent les unes des autres dans un même instant</translation>
    </message>
    <message>
        <source>&quot;%1&quot; follows from &quot;%2&quot; here: %3</source>
        <translation>« %1 » découle ici de « %2 » : %3</translation>
    </message>
    <message>
        <source>put a pause between cause and effect</source>
        <translation>mettez une pause entre la cause et l’effet</translation>
    </message>
    <message>
        <source>a strong abort cannot wait for what its own body does in that instant: use weak abort</source>
        <translation>un strong abort ne peut pas attendre ce que son propre corps fait dans cet instant : utilisez weak abort</translation>
    </message>
    <message>
        <source>it does not settle in instant %1 of this run: %L2</source>
        <translation>il ne se stabilise pas à l’instant %1 de cette exécution : %2</translation>
    </message>
    <message>
        <source>whether it settles is too much to find out</source>
        <translation>savoir s’il se stabilise demande trop de calcul</translation>
    </message>
    <message>
        <source>whether it settles is still being found out</source>
        <translation>on cherche encore s’il se stabilise</translation>
    </message>
    <message>
        <source>a module that this one runs is started while signals of it still depend on each other in one instant</source>
        <translation>un module que celui-ci exécute est démarré alors que des signaux y dépendent encore les uns des autres dans un même instant</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is an input that nothing reads</source>
        <translation>« %1 » est une entrée que rien ne lit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is an output that nothing emits</source>
        <translation>« %1 » est une sortie que rien n’émet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a local that nothing reads</source>
        <translation>« %1 » est un local que rien ne lit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a local that nothing emits</source>
        <translation>« %1 » est un local que rien n’émet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a local that nothing emits or reads</source>
        <translation>« %1 » est un local que rien n’émet ni ne lit</translation>
    </message>
    <message>
        <source>module &quot;%1&quot; is not reached from &quot;%2&quot;, the last of the file</source>
        <translation>le module « %1 » n’est pas atteint depuis « %2 », le dernier du fichier</translation>
    </message>
    <message>
        <source>the value of &quot;%1&quot; does not count: it is emitted again in the same instant</source>
        <translation>la valeur de « %1 » ne compte pas : il est émis de nouveau dans le même instant</translation>
    </message>
    <message>
        <source>the value of &quot;%1&quot; does not count in an instant in which it is emitted again</source>
        <translation>la valeur de « %1 » ne compte pas dans un instant où il est émis de nouveau</translation>
    </message>
    <message>
        <source>here</source>
        <translation>ici</translation>
    </message>
    <message>
        <source>this is never reached: what stands before it never ends</source>
        <translation>ceci n’est jamais atteint : ce qui précède ne finit jamais</translation>
    </message>
    <message>
        <source>the automaton has no initial-&gt; transition and never begins</source>
        <translation>l’automate n’a pas de transition initial-&gt; et ne commence jamais</translation>
    </message>
    <message>
        <source>state &quot;%1&quot; is declared nowhere</source>
        <translation>l’état « %1 » n’est déclaré nulle part</translation>
    </message>
    <message>
        <source>state &quot;%1&quot; is declared nowhere; the beginning is written initial-&gt;, without a blank</source>
        <translation>l’état « %1 » n’est déclaré nulle part ; le début s’écrit initial-&gt;, sans espace</translation>
    </message>
    <message>
        <source>this is a state like others; the beginning is written initial-&gt;</source>
        <translation>c’est un état comme les autres ; le début s’écrit initial-&gt;</translation>
    </message>
    <message>
        <source>no transition leads to state &quot;%1&quot; from the initial one</source>
        <translation>aucune transition ne mène de l’état initial à l’état « %1 »</translation>
    </message>
    <message>
        <source>a later equation replaces this one of &quot;%1&quot;</source>
        <translation>une équation ultérieure remplace celle-ci, de « %1 »</translation>
    </message>
    <message>
        <source>no equation gives &quot;%1&quot;, the next of register &quot;%2&quot;</source>
        <translation>aucune équation ne donne « %1 », l’état suivant du registre « %2 »</translation>
    </message>
    <message>
        <source>the condition of this present is always %L1</source>
        <translation>la condition de ce present est toujours %1</translation>
    </message>
    <message>
        <source>node %1: variable number %2 is outside the names of the file</source>
        <translation>nœud %1 : la variable numéro %2 n’est pas parmi les noms du fichier</translation>
    </message>
    <message>
        <source>variable number %1 is outside the names of the file</source>
        <translation>la variable numéro %1 n’est pas parmi les noms du fichier</translation>
    </message>
    <message>
        <source>node %1: else link %2 is neither 1 nor -1</source>
        <translation>nœud %1 : le lien else %2 n’est ni 1 ni -1</translation>
    </message>
    <message>
        <source>equation link %1 is neither 1 nor -1</source>
        <translation>le lien d’équation %1 n’est ni 1 ni -1</translation>
    </message>
    <message>
        <source>node number %1 has no line</source>
        <translation>le nœud numéro %1 n’a pas de ligne</translation>
    </message>
    <message>
        <source>node %1: child number %2 has no line</source>
        <translation>nœud %1 : le fils numéro %2 n’a pas de ligne</translation>
    </message>
    <message>
        <source>node %1 reaches itself through node %2</source>
        <translation>le nœud %1 s’atteint lui-même par le nœud %2</translation>
    </message>
    <message>
        <source>evaluation line %1 reaches itself through line %2</source>
        <translation>la ligne d’évaluation %1 s’atteint elle-même par la ligne %2</translation>
    </message>
    <message>
        <source>evaluation line %1: %L2 number %3 is not declared in the file</source>
        <translation>ligne d’évaluation %1 : %2 numéro %3 n’est pas dans le fichier</translation>
    </message>
    <message>
        <source>signal &quot;%1&quot; stands twice</source>
        <translation>le signal « %1 » figure deux fois</translation>
    </message>
    <message>
        <source>more than 32767 %L1 in one file</source>
        <translation>plus de 32767 %1 dans un fichier</translation>
    </message>
    <message>
        <source>ends too early</source>
        <translation>finit trop tôt</translation>
    </message>
    <message>
        <source>%1 numbers are awaited</source>
        <translation>%1 nombres sont attendus</translation>
    </message>
    <message>
        <source>%1 is no literal here</source>
        <translation>%1 n’est pas un littéral ici</translation>
    </message>
    <message>
        <source>begins neither with aag nor with aig</source>
        <translation>ne commence ni par aag ni par aig</translation>
    </message>
    <message>
        <source>the head wants five numbers: M I L O A</source>
        <translation>l’en-tête demande cinq nombres : M I L O A</translation>
    </message>
    <message>
        <source>constraints, justice and fairness are not read</source>
        <translation>les contraintes, la justice et l’équité ne sont pas lues</translation>
    </message>
    <message>
        <source>more than %1 inputs</source>
        <translation>plus de %1 entrées</translation>
    </message>
    <message>
        <source>more variables than the head's M</source>
        <translation>plus de variables que le M de l’en-tête</translation>
    </message>
    <message>
        <source>a number that is too long</source>
        <translation>un nombre trop long</translation>
    </message>
    <message>
        <source>&quot;%1&quot; names nothing</source>
        <translation>« %1 » ne nomme rien</translation>
    </message>
    <message>
        <source>%1 is no variable</source>
        <translation>%1 n’est pas une variable</translation>
    </message>
    <message>
        <source>%1 is defined twice</source>
        <translation>%1 est défini deux fois</translation>
    </message>
    <message>
        <source>no and has that literal</source>
        <translation>aucun and n’a ce littéral</translation>
    </message>
    <message>
        <source>holds no .model</source>
        <translation>ne contient pas de .model</translation>
    </message>
    <message>
        <source>a .model is awaited, not %1</source>
        <translation>un .model est attendu, non %1</translation>
    </message>
    <message>
        <source>a second .model; one is read</source>
        <translation>un second .model ; un seul est lu</translation>
    </message>
    <message>
        <source>.names without a net</source>
        <translation>.names sans net</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not read</source>
        <translation>« %1 » n’est pas lu</translation>
    </message>
    <message>
        <source>.latch wants two nets</source>
        <translation>.latch demande deux nets</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no initial value of a latch</source>
        <translation>« %1 » n’est pas la valeur initiale d’une bascule</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in no table</source>
        <translation>« %1 » ne figure dans aucune table</translation>
    </message>
    <message>
        <source>a row of this table has %1 of 0, 1 or -, then 0 or 1</source>
        <translation>une ligne de cette table a %1 fois 0, 1 ou -, puis 0 ou 1</translation>
    </message>
    <message>
        <source>a row ends with 0 or 1, not &quot;%1&quot;</source>
        <translation>une ligne finit par 0 ou 1, non par « %1 »</translation>
    </message>
    <message>
        <source>rows for 0 and for 1</source>
        <translation>des lignes pour 0 et pour 1</translation>
    </message>
    <message>
        <source>no gate &quot;%1&quot; of %2 nets is known</source>
        <translation>aucune porte « %1 » à %2 nets n’est connue</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is driven twice</source>
        <translation>« %1 » est piloté deux fois</translation>
    </message>
    <message>
        <source>the output &quot;%1&quot; stands twice</source>
        <translation>la sortie « %1 » figure deux fois</translation>
    </message>
    <message>
        <source>nothing drives &quot;%1&quot;</source>
        <translation>rien ne pilote « %1 »</translation>
    </message>
    <message>
        <source>&quot;%1&quot; depends on itself</source>
        <translation>« %1 » dépend de lui-même</translation>
    </message>
    <message>
        <source>%1: %2: nothing computes this output; it stays absent</source>
        <translation>%1 : %2 : rien ne calcule cette sortie ; elle reste absente</translation>
    </message>
    <message>
        <source>%1: %2: computed from data, which cannot be written; it is a further input</source>
        <translation>%1 : %2 : calculé à partir de données, ce qui ne peut pas être écrit ; c’est une entrée de plus</translation>
    </message>
    <message>
        <source>%1: %2: nothing computes this; it is a further input</source>
        <translation>%1 : %2 : rien ne le calcule ; c’est une entrée de plus</translation>
    </message>
    <message>
        <source>%1: inner signals under other names: %2</source>
        <translation>%1 : signaux internes sous d’autres noms : %2</translation>
    </message>
    <message>
        <source>%1: %2 &quot;%3&quot; is written as &quot;%4&quot;: %L5</source>
        <translation>%1 : %2 « %3 » s’écrit « %4 » : %5</translation>
    </message>
    <message>
        <source>the constant &quot;%1&quot; has a value that the target does not take: not a number, a quoted string or a name</source>
        <translation>la constante « %1 » a une valeur que la cible n’admet pas : ni nombre, ni texte entre guillemets, ni nom</translation>
    </message>
    <message>
        <source>the name &quot;%1&quot; cannot stand in C++</source>
        <translation>le nom « %1 » ne peut pas figurer en C++</translation>
    </message>
    <message>
        <source>no value for data in the target's text: %1</source>
        <translation>pas de valeur pour une donnée dans le texte de la cible : %1</translation>
    </message>
    <message>
        <source>no name for data in the target's text: %1</source>
        <translation>pas de nom pour une donnée dans le texte de la cible : %1</translation>
    </message>
    <message>
        <source>a keyword of the target's, used as a name for data: %1</source>
        <translation>un mot réservé de la cible, employé comme nom de donnée : %1</translation>
    </message>
    <message>
        <source>too many products in the equation of: %1</source>
        <translation>trop de produits dans l’équation de : %1</translation>
    </message>
    <message>
        <source>the explicit automaton needs three outputs and an equation of the rtl wire;: %1 outputs, an rtl equation</source>
        <translation>l’automate explicite demande trois sorties et une équation du fil rtl : il y a %1 sorties et une équation rtl</translation>
    </message>
    <message>
        <source>the explicit automaton needs three outputs and an equation of the rtl wire;: %1 outputs, no rtl equation (tarn --keep-rtl keeps it)</source>
        <translation>l’automate explicite demande trois sorties et une équation du fil rtl : il y a %1 sorties et pas d’équation rtl (tarn --keep-rtl la garde)</translation>
    </message>
    <message>
        <source>more states than an explicit automaton can have: %1</source>
        <translation>plus d’états qu’un automate explicite ne peut en avoir : %1</translation>
    </message>
    <message>
        <source>this is no JSON</source>
        <translation>ceci n’est pas du JSON</translation>
    </message>
    <message>
        <source>a message has a method</source>
        <translation>un message a une méthode</translation>
    </message>
    <message>
        <source>the server has been shut down</source>
        <translation>le serveur a été arrêté</translation>
    </message>
    <message>
        <source>the server has not been initialized</source>
        <translation>le serveur n’a pas été initialisé</translation>
    </message>
    <message>
        <source>%1 is not open</source>
        <translation>%1 n’est pas ouvert</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be a name: letters, digits and _ behind a letter, and no word of the language</source>
        <translation>« %1 » ne peut pas être un nom : des lettres, des chiffres et _ après une lettre, et aucun mot du langage</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is declared already</source>
        <translation>« %1 » est déjà déclaré</translation>
    </message>
    <message>
        <source>nothing can be renamed here</source>
        <translation>rien ne peut être renommé ici</translation>
    </message>
    <message>
        <source>Use a weak abort</source>
        <translation>Utiliser un weak abort</translation>
    </message>
    <message>
        <source>Declare &quot;%1&quot; as a local</source>
        <translation>Déclarer « %1 » comme local</translation>
    </message>
    <message>
        <source>Declare &quot;%1&quot; as an input</source>
        <translation>Déclarer « %1 » comme entrée</translation>
    </message>
    <message>
        <source>Declare &quot;%1&quot; as an output</source>
        <translation>Déclarer « %1 » comme sortie</translation>
    </message>
    <message>
        <source>Add an else</source>
        <translation>Ajouter un else</translation>
    </message>
    <message>
        <source>input</source>
        <translation>entrée</translation>
    </message>
    <message>
        <source>output</source>
        <translation>sortie</translation>
    </message>
    <message>
        <source>local</source>
        <translation>local</translation>
    </message>
    <message>
        <source>register</source>
        <translation>registre</translation>
    </message>
    <message>
        <source>input: %1</source>
        <translation>entrée : %1</translation>
    </message>
    <message>
        <source>output: %1</source>
        <translation>sortie : %1</translation>
    </message>
    <message>
        <source>local: %1</source>
        <translation>local : %1</translation>
    </message>
    <message>
        <source>register: %1</source>
        <translation>registre : %1</translation>
    </message>
    <message>
        <source>input of %1</source>
        <translation>entrée de %1</translation>
    </message>
    <message>
        <source>output of %1</source>
        <translation>sortie de %1</translation>
    </message>
    <message>
        <source>module of %1</source>
        <translation>module de %1</translation>
    </message>
    <message>
        <source>not declared: `%1`</source>
        <translation>non déclaré : `%1`</translation>
    </message>
    <message>
        <source>not declared: `%1` of module `%2`</source>
        <translation>non déclaré : `%1` du module `%2`</translation>
    </message>
    <message>
        <source>input `%1` of module `%2`</source>
        <translation>entrée `%1` du module `%2`</translation>
    </message>
    <message>
        <source>output `%1` of module `%2`</source>
        <translation>sortie `%1` du module `%2`</translation>
    </message>
    <message>
        <source>local `%1` of module `%2`</source>
        <translation>local `%1` du module `%2`</translation>
    </message>
    <message>
        <source>register `%1` of module `%2`</source>
        <translation>registre `%1` du module `%2`</translation>
    </message>
    <message>
        <source>input `%1`: %2 of module `%3`</source>
        <translation>entrée `%1` : %2 du module `%3`</translation>
    </message>
    <message>
        <source>output `%1`: %2 of module `%3`</source>
        <translation>sortie `%1` : %2 du module `%3`</translation>
    </message>
    <message>
        <source>local `%1`: %2 of module `%3`</source>
        <translation>local `%1` : %2 du module `%3`</translation>
    </message>
    <message>
        <source>register `%1`: %2 of module `%3`</source>
        <translation>registre `%1` : %2 du module `%3`</translation>
    </message>
    <message>
        <source>module `%1`</source>
        <translation>module `%1`</translation>
    </message>
    <message>
        <source>inputs: %1</source>
        <translation>entrées : %1</translation>
    </message>
    <message>
        <source>outputs: %1</source>
        <translation>sorties : %1</translation>
    </message>
    <message>
        <source>emitted: %L1</source>
        <translation>émis : %1</translation>
    </message>
    <message>
        <source>read: %L1</source>
        <translation>lu : %1</translation>
    </message>
    <message>
        <source>state `%1`</source>
        <translation>état `%1`</translation>
    </message>
    <message>
        <source>`%1` of the data part</source>
        <translation>`%1` de la partie données</translation>
    </message>
</context>
<context>
    <name>parts</name>
    <message>
        <source>%L1 or %L2</source>
        <translation>%1 ou %2</translation>
    </message>
    <message>
        <source>%L1 and %L2</source>
        <translation>%1 et %2</translation>
    </message>
    <message>
        <source>%L1, %L2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <translation>« %1 »</translation>
    </message>
    <message>
        <source>a statement</source>
        <translation>une instruction</translation>
    </message>
    <message>
        <source>a condition</source>
        <translation>une condition</translation>
    </message>
    <message>
        <source>a value</source>
        <translation>une valeur</translation>
    </message>
    <message>
        <source>an expression</source>
        <translation>une expression</translation>
    </message>
    <message>
        <source>an operator</source>
        <translation>un opérateur</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>un nombre</translation>
    </message>
    <message>
        <source>a literal</source>
        <translation>un littéral</translation>
    </message>
    <message>
        <source>an arrow</source>
        <translation>une flèche</translation>
    </message>
    <message>
        <source>a name</source>
        <translation>un nom</translation>
    </message>
    <message>
        <source>a text in quotes</source>
        <translation>un texte entre guillemets</translation>
    </message>
    <message>
        <source>the end of the text</source>
        <translation>la fin du texte</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a condition</source>
        <translation>« %1 » est une condition</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is of type %2</source>
        <translation>« %1 » est de type %2</translation>
    </message>
    <message>
        <source>argument %1 of &quot;%2&quot;</source>
        <translation>l’argument %1 de « %2 »</translation>
    </message>
    <message>
        <source>%L1; present: %2</source>
        <translation>%1 ; présents : %2</translation>
    </message>
    <message>
        <source>%L1; no output is present</source>
        <translation>%1 ; aucune sortie n’est présente</translation>
    </message>
    <message>
        <source>present</source>
        <translation>présent</translation>
    </message>
    <message>
        <source>absent</source>
        <translation>absent</translation>
    </message>
    <message>
        <source>present without value</source>
        <translation>présent sans valeur</translation>
    </message>
    <message>
        <source>outputs</source>
        <translation>sorties</translation>
    </message>
    <message>
        <source>locals</source>
        <translation>locaux</translation>
    </message>
    <message>
        <source>registers</source>
        <translation>registres</translation>
    </message>
    <message>
        <source>input &quot;%1&quot;</source>
        <translation>l’entrée « %1 »</translation>
    </message>
    <message>
        <source>output &quot;%1&quot;</source>
        <translation>la sortie « %1 »</translation>
    </message>
    <message>
        <source>the connection is closed</source>
        <translation>la connexion est fermée</translation>
    </message>
    <message>
        <source>there is no connection</source>
        <translation>il n’y a pas de connexion</translation>
    </message>
    <message>
        <source>there is no such host</source>
        <translation>cet hôte n’existe pas</translation>
    </message>
    <message>
        <source>given up</source>
        <translation>abandon</translation>
    </message>
    <message>
        <source>nothing within %1 s</source>
        <translation>rien en %1 s</translation>
    </message>
    <message>
        <source>text that belongs to no request</source>
        <translation>un texte qui ne répond à aucune requête</translation>
    </message>
    <message>
        <source>a reply without end</source>
        <translation>une réponse sans fin</translation>
    </message>
    <message>
        <source>the reply to &quot;%1&quot;</source>
        <translation>la réponse à « %1 »</translation>
    </message>
    <message>
        <source>its address</source>
        <translation>son adresse</translation>
    </message>
    <message>
        <source>a connection</source>
        <translation>une connexion</translation>
    </message>
    <message>
        <source>no more text</source>
        <translation>la fin du texte</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>rien</translation>
    </message>
    <message>
        <source>no input</source>
        <translation>aucune entrée</translation>
    </message>
    <message>
        <source>%L1; %L2</source>
        <translation>%1 ; %2</translation>
    </message>
    <message>
        <source>starts</source>
        <translation>démarre</translation>
    </message>
    <message>
        <source>stays</source>
        <translation>attend</translation>
    </message>
    <message>
        <source>ends</source>
        <translation>se termine</translation>
    </message>
    <message>
        <source>is killed</source>
        <translation>est interrompue</translation>
    </message>
    <message>
        <source>does nothing</source>
        <translation>ne fait rien</translation>
    </message>
    <message>
        <source>1 run</source>
        <translation>1 exécution</translation>
    </message>
    <message>
        <source>%1 runs</source>
        <translation>%1 exécutions</translation>
    </message>
    <message>
        <source>1 instant</source>
        <translation>1 instant</translation>
    </message>
    <message>
        <source>%1 instants</source>
        <translation>%1 instants</translation>
    </message>
    <message>
        <source>statements</source>
        <translation>instruction</translation>
    </message>
    <message>
        <source>states of automata</source>
        <translation>état</translation>
    </message>
    <message>
        <source>states</source>
        <translation>état</translation>
    </message>
    <message>
        <source>transitions</source>
        <translation>transition</translation>
    </message>
    <message>
        <source>no name there</source>
        <translation>n’y est pas un nom</translation>
    </message>
    <message>
        <source>a keyword there</source>
        <translation>y est un mot réservé</translation>
    </message>
    <message>
        <source>the name is taken</source>
        <translation>le nom est pris</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>ligne %1</translation>
    </message>
    <message>
        <source>lines %1</source>
        <translation>lignes %1</translation>
    </message>
    <message>
        <source>nowhere</source>
        <translation>nulle part</translation>
    </message>
    <message>
        <source>input %1</source>
        <translation>entrée %1</translation>
    </message>
    <message>
        <source>output %1</source>
        <translation>sortie %1</translation>
    </message>
    <message>
        <source>local %1</source>
        <translation>local %1</translation>
    </message>
    <message>
        <source>register %1</source>
        <translation>registre %1</translation>
    </message>
    <message>
        <source>for a person</source>
        <translation>pour une personne</translation>
    </message>
    <message>
        <source>text without registers and locals</source>
        <translation>text sans registres ni locaux</translation>
    </message>
    <message>
        <source>an object a line</source>
        <translation>un objet par ligne</translation>
    </message>
    <message>
        <source>nothing, for checks alone</source>
        <translation>rien, pour les seules vérifications</translation>
    </message>
    <message>
        <source>a line by which runs are compared</source>
        <translation>une ligne par laquelle comparer des exécutions</translation>
    </message>
    <message>
        <source>a value change dump, for wave viewers</source>
        <translation>value change dump, pour les afficheurs d’ondes</translation>
    </message>
    <message>
        <source>the same, compressed by vcd2fst</source>
        <translation>le même, compressé par vcd2fst</translation>
    </message>
    <message>
        <source>constant</source>
        <translation>constante</translation>
    </message>
    <message>
        <source>method</source>
        <translation>méthode</translation>
    </message>
    <message>
        <source>type</source>
        <translation>type</translation>
    </message>
    <message>
        <source>types</source>
        <translation>types</translation>
    </message>
    <message>
        <source>methods</source>
        <translation>méthodes</translation>
    </message>
    <message>
        <source>constants</source>
        <translation>constantes</translation>
    </message>
</context>
<context>
    <name>help</name>
    <message>
        <source>Runs</source>
        <translation>Exécutions </translation>
    </message>
    <message>
        <source>What is looked at</source>
        <translation>Ce qui est observé </translation>
    </message>
    <message>
        <source>print the version</source>
        <translation>affiche la version</translation>
    </message>
    <message>
        <source>print this text</source>
        <translation>affiche ce texte</translation>
    </message>
    <message>
        <source>shows what the library has to tell</source>
        <translation>montre ce que la bibliothèque a à dire</translation>
    </message>
    <message>
        <source>module to run (.zuc)</source>
        <translation>module à exécuter (.zuc)</translation>
    </message>
    <message>
        <source>Compiles ZU source text to modules, and writes compiled modules as other text.</source>
        <translation>Compile des textes sources ZU en modules, et écrit des modules compilés sous d’autres formes.</translation>
    </message>
    <message>
        <source>source text (.zu), compiled modules (.zuc) or netlists (.blif, .bench, .aag, .aig); beside source text, what its runs call</source>
        <translation>texte source (.zu), modules compilés (.zuc) ou netlists (.blif, .bench, .aag, .aig) ; à côté d’un texte source, ce qu’appellent ses run</translation>
    </message>
    <message>
        <source>write the compiled module, MODULE.zuc (the default)</source>
        <translation>écrit le module compilé, MODULE.zuc (par défaut)</translation>
    </message>
    <message>
        <source>write the evaluation server, kiva_MODULE.cc</source>
        <translation>écrit le serveur d’évaluation, kiva_MODULE.cc</translation>
    </message>
    <message>
        <source>let circuits in VHDL and SystemVerilog reset at once, not at the clock's edge</source>
        <translation>en VHDL et SystemVerilog, remise à zéro immédiate et non au front d’horloge</translation>
    </message>
    <message>
        <source>write target texts without comments that tell their source</source>
        <translation>écrit les textes cibles sans les commentaires qui renvoient à la source</translation>
    </message>
    <message>
        <source>write the automata of MODULE for Graphviz, MODULE.dot</source>
        <translation>écrit les automates de MODULE pour Graphviz, MODULE.dot</translation>
    </message>
    <message>
        <source>draw the automata of MODULE, MODULE.svg</source>
        <translation>dessine les automates de MODULE, MODULE.svg</translation>
    </message>
    <message>
        <source>with these, the states that the module can reach</source>
        <translation>avec ceux-ci, les états que le module peut atteindre</translation>
    </message>
    <message>
        <source>TARGET STIMULI: write that target's text and a bench that gives it the stimuli and holds it to what they await; says how to run it</source>
        <translation>CIBLE STIMULI : écrit le texte de cette cible et un banc d’essai qui lui donne les stimuli et vérifie ce qu’ils attendent ; dit comment le lancer</translation>
    </message>
    <message>
        <source>run each target's bench with random stimuli, where its tool is installed, and print which agree; exit with 1 if one does not</source>
        <translation>lance le banc d’essai de chaque cible dont l’outil est installé, avec des stimuli aléatoires, et dit lesquelles concordent ; finit avec 1 si l’une ne concorde pas</translation>
    </message>
    <message>
        <source>do two modules give the same outputs, whatever their inputs? If not, print stimuli that tell them apart, and exit with 1</source>
        <translation>deux modules donnent-ils les mêmes sorties, quelles que soient leurs entrées ? Sinon, affiche des stimuli qui les distinguent, et finit avec 1</translation>
    </message>
    <message>
        <source>FIRST SECOND: with --equiv, compile the first module by the rules sound or classic, the second by the others; of one source file, tells which statement does something else</source>
        <translation>PREMIER SECOND : avec --equiv, compile le premier module selon les règles sound ou classic, le second selon les autres ; pour un seul fichier source, dit quelle instruction fait autre chose</translation>
    </message>
    <message>
        <source>print an expression over the signals of a compiled module as a sum of products over inputs and registers</source>
        <translation>affiche une expression sur les signaux d’un module compilé comme somme de produits d’entrées et de registres</translation>
    </message>
    <message>
        <source>prove that an expression over the signals never holds, or print stimuli that end where it does; repeatable, as are the next three</source>
        <translation>prouve qu’une expression sur les signaux n’est jamais vraie, ou affiche des stimuli qui finissent là où elle l’est ; peut se répéter, comme les trois suivantes</translation>
    </message>
    <message>
        <source>prove that an expression always holds</source>
        <translation>prouve qu’une expression est toujours vraie</translation>
    </message>
    <message>
        <source>print the shortest stimuli that end where an expression holds</source>
        <translation>affiche les plus courts stimuli qui finissent là où une expression est vraie</translation>
    </message>
    <message>
        <source>look only at runs in which an expression holds</source>
        <translation>ne considère que les exécutions où une expression est vraie</translation>
    </message>
    <message>
        <source>prove what comments of the source ask for: ;; @never EXPR, @always, @reach, @assume; warn of what never happens, and count the states</source>
        <translation>prouve ce que demandent les commentaires de la source : ;; @never EXPR, @always, @reach, @assume ; signale ce qui n’arrive jamais, et compte les états</translation>
    </message>
    <message>
        <source>write stimuli that reach every statement, state and transition that can be reached</source>
        <translation>écrit des stimuli qui atteignent chaque instruction, état et transition accessible</translation>
    </message>
    <message>
        <source>lay source texts out, each in its place; &quot;-&quot; for from standard input to output</source>
        <translation>met en page des textes sources, chacun sur place ; « - » : de l’entrée standard à la sortie standard</translation>
    </message>
    <message>
        <source>with --fmt: write nothing, name what would change and exit with 1 if something would</source>
        <translation>avec --fmt : n’écrit rien, nomme ce qui changerait et finit avec 1 s’il y en a</translation>
    </message>
    <message>
        <source>in proofs, reset may be raised at any time</source>
        <translation>dans les preuves, reset peut être levé à tout moment</translation>
    </message>
    <message>
        <source>folder for what lets others check a proof: DIR/check [SOLVER]</source>
        <translation>dossier pour ce qui permet à d’autres de vérifier une preuve : DIR/check [SOLVER]</translation>
    </message>
    <message>
        <source>seconds for each proof (default: 60)</source>
        <translation>secondes pour chaque preuve (par défaut : 60)</translation>
    </message>
    <message>
        <source>compile this module only; repeatable</source>
        <translation>ne compile que ce module ; peut se répéter</translation>
    </message>
    <message>
        <source>folder for what is written (default: this one)</source>
        <translation>dossier pour ce qui est écrit (par défaut : celui-ci)</translation>
    </message>
    <message>
        <source>name of the file that is written</source>
        <translation>nom du fichier écrit</translation>
    </message>
    <message>
        <source>write onto a file that is read here, if need be</source>
        <translation>écrit au besoin sur un fichier lu ici</translation>
    </message>
    <message>
        <source>file for what the reader did with compiled modules</source>
        <translation>fichier pour ce que le lecteur a fait des modules compilés</translation>
    </message>
    <message>
        <source>file for errors and warnings in SARIF 2.1.0</source>
        <translation>fichier pour les erreurs et avertissements en SARIF 2.1.0</translation>
    </message>
    <message>
        <source>compile by the classic rules, write classic target texts</source>
        <translation>compile selon les règles classiques, écrit des textes cibles classiques</translation>
    </message>
    <message>
        <source>leave the module as compiled</source>
        <translation>laisse le module tel que compilé</translation>
    </message>
    <message>
        <source>keep equations that copy another</source>
        <translation>garde les équations qui en recopient une autre</translation>
    </message>
    <message>
        <source>write MODULE.zuc.map, by which the scope lights the source text; keeps wires</source>
        <translation>écrit MODULE.zuc.map, par quoi l’oscilloscope éclaire le texte source ; garde les fils</translation>
    </message>
    <message>
        <source>keep the wire that tells the end of the module</source>
        <translation>garde le fil qui dit la fin du module</translation>
    </message>
    <message>
        <source>write numbers for the names of locals</source>
        <translation>écrit des numéros au lieu des noms des locaux</translation>
    </message>
    <message>
        <source>leave out locals that nothing needs</source>
        <translation>omet les locaux dont rien n’a besoin</translation>
    </message>
    <message>
        <source>add an output that tells of outputs in Top</source>
        <translation>ajoute une sortie qui signale les sorties à Top</translation>
    </message>
    <message>
        <source>write comments beside the equations</source>
        <translation>écrit des commentaires à côté des équations</translation>
    </message>
    <message>
        <source>show messages in windows as well</source>
        <translation>montre aussi les messages dans des fenêtres</translation>
    </message>
    <message>
        <source>tell the size of each module and the time of each stage</source>
        <translation>dit la taille de chaque module et la durée de chaque étape</translation>
    </message>
    <message>
        <source>do not name what has been written</source>
        <translation>ne nomme pas ce qui a été écrit</translation>
    </message>
    <message>
        <source>show all that the library has to tell</source>
        <translation>montre tout ce que la bibliothèque a à dire</translation>
    </message>
    <message>
        <source>-Wno-NAME leaves warnings of that name out, -Werror makes errors of them</source>
        <translation>-Wno-NAME omet les avertissements de ce nom, -Werror en fait des erreurs</translation>
    </message>
    <message>
        <source>serve an editor over standard input and output (Language Server Protocol)</source>
        <translation>sert un éditeur par l’entrée et la sortie standard (Language Server Protocol)</translation>
    </message>
    <message>
        <source>Target texts of MODULE, beside each other as wanted:</source>
        <translation>Textes cibles de MODULE, autant que voulu :</translation>
    </message>
    <message>
        <source>compiles every module of the file</source>
        <translation>compile chaque module du fichier</translation>
    </message>
    <message>
        <source>compiles one of them into a folder</source>
        <translation>compile l’un d’eux dans un dossier</translation>
    </message>
    <message>
        <source>main.zu runs a module that has been compiled</source>
        <translation>main.zu exécute un module déjà compilé</translation>
    </message>
    <message>
        <source>writes a compiled module as C</source>
        <translation>écrit un module compilé en C</translation>
    </message>
    <message>
        <source>writes it with a main that checks it</source>
        <translation>l’écrit avec un main qui le vérifie</translation>
    </message>
    <message>
        <source>tells whether two modules do the same</source>
        <translation>dit si deux modules font la même chose</translation>
    </message>
    <message>
        <source>proves that it cannot be, or shows how</source>
        <translation>prouve que c’est impossible, ou montre comment</translation>
    </message>
    <message>
        <source>shows what an expression is made of</source>
        <translation>montre de quoi une expression est faite</translation>
    </message>
    <message>
        <source>lays source texts out</source>
        <translation>met en page des textes sources</translation>
    </message>
    <message>
        <source>Runs a compiled module over stimuli and writes the trace.</source>
        <translation>Exécute un module compilé sur des stimuli et écrit la trace.</translation>
    </message>
    <message>
        <source>one line an instant; standard input when missing or &quot;-&quot;</source>
        <translation>une ligne par instant ; l’entrée standard en l’absence ou avec « - »</translation>
    </message>
    <message>
        <source>text (%L1), outputs (%L2), json (%L3), none (%L4), digest (%L5), vcd (%L6), fst (%L7)</source>
        <translation>text (%1), outputs (%2), json (%3), none (%4), digest (%5), vcd (%6), fst (%7)</translation>
    </message>
    <message>
        <source>file for the trace instead of the standard output</source>
        <translation>fichier pour la trace au lieu de la sortie standard</translation>
    </message>
    <message>
        <source>file for what the reader did with the module</source>
        <translation>fichier pour ce que le lecteur a fait du module</translation>
    </message>
    <message>
        <source>HOST PORT of the evaluation server</source>
        <translation>HOST PORT du serveur d’évaluation</translation>
    </message>
    <message>
        <source>seconds to wait for the server and each reply (5)</source>
        <translation>secondes d’attente du serveur et de chaque réponse (5)</translation>
    </message>
    <message>
        <source>serve a debugger over standard input and output (Debug Adapter Protocol)</source>
        <translation>sert un débogueur par l’entrée et la sortie standard (Debug Adapter Protocol)</translation>
    </message>
    <message>
        <source>N instants of random inputs in place of stimuli</source>
        <translation>N instants d’entrées aléatoires au lieu de stimuli</translation>
    </message>
    <message>
        <source>of the random inputs (1)</source>
        <translation>des entrées aléatoires (1)</translation>
    </message>
    <message>
        <source>NAME=P: the input is One with probability P</source>
        <translation>NAME=P : l’entrée est à Un avec la probabilité P</translation>
    </message>
    <message>
        <source>NAME=A,B,...: the texts that a valued input carries</source>
        <translation>NAME=A,B,... : les textes que porte une entrée à valeur</translation>
    </message>
    <message>
        <source>file for the inputs of the run</source>
        <translation>fichier pour les entrées de l’exécution</translation>
    </message>
    <message>
        <source>ends with the instant in which the condition holds, with status 1 if none does</source>
        <translation>finit à l’instant où la condition est vraie, avec le statut 1 si elle ne l’est jamais</translation>
    </message>
    <message>
        <source>writes what is seen into the stimuli file, as expectations</source>
        <translation>écrit ce qui est observé dans le fichier de stimuli, comme attentes</translation>
    </message>
    <message>
        <source>a trace in JSON that the run must have</source>
        <translation>une trace en JSON que l’exécution doit avoir</translation>
    </message>
    <message>
        <source>tells on the error stream what signals and states the run has shown</source>
        <translation>dit sur la sortie d’erreur quels signaux et états l’exécution a montrés</translation>
    </message>
    <message>
        <source>adds the run's coverage to that of earlier runs in this file</source>
        <translation>ajoute la couverture de l’exécution à celle des précédentes dans ce fichier</translation>
    </message>
    <message>
        <source>NAME@INSTANT: in place of the trace, the inputs and registers that make the signal what it is there</source>
        <translation>NAME@INSTANT : au lieu de la trace, les entrées et registres qui font du signal ce qu’il est à cet instant</translation>
    </message>
    <message>
        <source>shows what the library has to tell, and with --why the way down</source>
        <translation>montre ce que la bibliothèque a à dire, et avec --why le chemin complet</translation>
    </message>
    <message>
        <source>runs the module, an instant a line</source>
        <translation>exécute le module, un instant par ligne</translation>
    </message>
    <message>
        <source>for a wave viewer</source>
        <translation>pour un afficheur d’ondes</translation>
    </message>
    <message>
        <source>random inputs, and what they reached</source>
        <translation>des entrées aléatoires, et ce qu’elles ont atteint</translation>
    </message>
    <message>
        <source>why a signal is what it is</source>
        <translation>pourquoi un signal est ce qu’il est</translation>
    </message>
    <message>
        <source>Makes many runs of a compiled module, and holds them to what must be.</source>
        <translation>Fait de nombreuses exécutions d’un module compilé, et vérifie ce qui doit être.</translation>
    </message>
    <message>
        <source>N random runs</source>
        <translation>N exécutions aléatoires</translation>
    </message>
    <message>
        <source>of each random run (100)</source>
        <translation>de chaque exécution aléatoire (100)</translation>
    </message>
    <message>
        <source>in place of random runs, those of the files DIR/*.stimuli</source>
        <translation>au lieu d’exécutions aléatoires, celles des fichiers DIR/*.stimuli</translation>
    </message>
    <message>
        <source>an expression over the signals that must never hold; repeatable, as are the next two</source>
        <translation>une expression sur les signaux qui ne doit jamais être vraie ; peut se répéter, comme les deux suivantes</translation>
    </message>
    <message>
        <source>one that must always hold</source>
        <translation>une expression qui doit toujours être vraie</translation>
    </message>
    <message>
        <source>a run counts only as long as an expression holds</source>
        <translation>une exécution ne compte qu’aussi longtemps qu’une expression est vraie</translation>
    </message>
    <message>
        <source>a module with the same inputs whose outputs must be the same</source>
        <translation>un module aux mêmes entrées, dont les sorties doivent être les mêmes</translation>
    </message>
    <message>
        <source>K/N makes part K of N; auto takes both from an array of Slurm, auto/N takes K from Slurm or an indexed job of Kubernetes</source>
        <translation>K/N fait la partie K sur N ; auto prend les deux d’un tableau Slurm, auto/N prend K de Slurm ou d’un job indexé de Kubernetes</translation>
    </message>
    <message>
        <source>adds up the results of all shards</source>
        <translation>additionne les résultats de toutes les parties</translation>
    </message>
    <message>
        <source>threads to work with (one a core)</source>
        <translation>fils d’exécution au travail (un par cœur)</translation>
    </message>
    <message>
        <source>file for the results instead of the standard output</source>
        <translation>fichier pour les résultats au lieu de la sortie standard</translation>
    </message>
    <message>
        <source>folder for runs that fail (this one)</source>
        <translation>dossier pour les exécutions qui échouent (celui-ci)</translation>
    </message>
    <message>
        <source>tells on the error stream what the runs have reached</source>
        <translation>dit sur la sortie d’erreur ce que les exécutions ont atteint</translation>
    </message>
    <message>
        <source>random runs, in none of which both may be present</source>
        <translation>des exécutions aléatoires, où les deux ne doivent jamais être présents ensemble</translation>
    </message>
    <message>
        <source>the same outputs?</source>
        <translation>les mêmes sorties ?</translation>
    </message>
    <message>
        <source>every file days/*.stimuli and what it awaits</source>
        <translation>chaque fichier days/*.stimuli et ce qu’il attend</translation>
    </message>
    <message>
        <source>a quarter of a campaign</source>
        <translation>un quart de campagne</translation>
    </message>
    <message>
        <source>the whole of it</source>
        <translation>la campagne entière</translation>
    </message>
    <message>
        <source>The simulator: shows a module, an instant at a time.</source>
        <translation>Le simulateur : montre un module, un instant après l’autre.</translation>
    </message>
    <message>
        <source>a compiled module (.zuc)</source>
        <translation>un module compilé (.zuc)</translation>
    </message>
    <message>
        <source>where the module's evaluation server runs</source>
        <translation>la machine du serveur d’évaluation du module</translation>
    </message>
    <message>
        <source>its port; 0 for none</source>
        <translation>son port ; 0 s’il n’y en a pas</translation>
    </message>
    <message>
        <source>opens a module without a server</source>
        <translation>ouvre un module sans serveur</translation>
    </message>
    <message>
        <source>opens the second window, too: waves, branches, why</source>
        <translation>ouvre aussi la seconde fenêtre : ondes, branches, pourquoi</translation>
    </message>
    <message>
        <source>opens it beside the window, where the screen has room</source>
        <translation>l’ouvre à côté de la fenêtre, si l’écran a la place</translation>
    </message>
    <message>
        <source>runs the first instant</source>
        <translation>exécute le premier instant</translation>
    </message>
    <message>
        <source>opens a module without data</source>
        <translation>ouvre un module sans données</translation>
    </message>
    <message>
        <source>compiles it, and again when it is saved</source>
        <translation>le compile, et de nouveau à chaque enregistrement</translation>
    </message>
    <message>
        <source>with waves, branches, source text and why</source>
        <translation>avec ondes, branches, texte source et pourquoi</translation>
    </message>
    <message>
        <source>with the module's evaluation server</source>
        <translation>avec le serveur d’évaluation du module</translation>
    </message>
    <message>
        <source>C object, .c and .h</source>
        <translation>objet C, .c et .h</translation>
    </message>
    <message>
        <source>C functions, .c and .h</source>
        <translation>fonctions C, .c et .h</translation>
    </message>
    <message>
        <source>C++ class, .hpp</source>
        <translation>classe C++, .hpp</translation>
    </message>
    <message>
        <source>Python class, .py</source>
        <translation>classe Python, .py</translation>
    </message>
    <message>
        <source>class, .mjs and .d.ts</source>
        <translation>classe, .mjs et .d.ts</translation>
    </message>
    <message>
        <source>the whole module, .json</source>
        <translation>module entier, .json</translation>
    </message>
    <message>
        <source>and-inverters, .aag, .aig</source>
        <translation>et-inverseurs, .aag, .aig</translation>
    </message>
    <message>
        <source>netlist, .blif</source>
        <translation>netlist, .blif</translation>
    </message>
    <message>
        <source>VHDL of bits, .vhdl</source>
        <translation>VHDL en bits, .vhdl</translation>
    </message>
    <message>
        <source>VHDL of std_logic, .vhdl</source>
        <translation>VHDL en std_logic, .vhdl</translation>
    </message>
    <message>
        <source>SystemVerilog module, .sv</source>
        <translation>module SystemVerilog, .sv</translation>
    </message>
    <message>
        <source>SystemC, _sc.cpp and _sc.h</source>
        <translation>SystemC, _sc.cpp et _sc.h</translation>
    </message>
    <message>
        <source>model checking, .smv</source>
        <translation>vérification, .smv</translation>
    </message>
    <message>
        <source>Lustre node, .lus</source>
        <translation>nœud Lustre, .lus</translation>
    </message>
    <message>
        <source>Esterel module, .strl</source>
        <translation>module Esterel, .strl</translation>
    </message>
    <message>
        <source>C# component, .cs</source>
        <translation>composant C#, .cs</translation>
    </message>
    <message>
        <source>interface as sections, .gal</source>
        <translation>interface, .gal</translation>
    </message>
    <message>
        <source>explicit automaton, .sce</source>
        <translation>automate explicite, .sce</translation>
    </message>
    <message>
        <source>transition system, .txt</source>
        <translation>transitions, .txt</translation>
    </message>
    <message>
        <source>LaTeX document, .tex</source>
        <translation>document LaTeX, .tex</translation>
    </message>
    <message>
        <source>document, .html</source>
        <translation>document, .html</translation>
    </message>
    <message>
        <source>tables in memory, .dbg</source>
        <translation>tables en mémoire, .dbg</translation>
    </message>
    <message>
        <source>Does nothing and ends at once.</source>
        <translation>Ne fait rien et se termine aussitôt.</translation>
    </message>
    <message>
        <source>Does nothing and never ends.</source>
        <translation>Ne fait rien et ne se termine jamais.</translation>
    </message>
    <message>
        <source>Ends in the instant after its start.</source>
        <translation>Se termine à l’instant qui suit son démarrage.</translation>
    </message>
    <message>
        <source>Makes an output or local present in this instant, and ends at once.</source>
        <translation>Rend présent une sortie ou un local dans cet instant, et se termine aussitôt.</translation>
    </message>
    <message>
        <source>Says that an output or local is absent in this instant, and ends at once.</source>
        <translation>Dit qu’une sortie ou un local est absent dans cet instant, et se termine aussitôt.</translation>
    </message>
    <message>
        <source>Waits for a later instant in which its condition holds, and ends in that one; with a number, so many times over.</source>
        <translation>Attend un instant ultérieur où sa condition est vraie, et s’y termine ; avec un nombre, autant de fois.</translation>
    </message>
    <message>
        <source>Emits a signal in each instant in which its condition does not hold, the first included; ends when it holds, perhaps at once.</source>
        <translation>Émet un signal à chaque instant où sa condition n’est pas vraie, le premier compris ; se termine quand elle l’est, peut-être aussitôt.</translation>
    </message>
    <message>
        <source>Takes the first branch if its condition holds in this instant, else the second, which may be left out.</source>
        <translation>Prend la première branche si sa condition est vraie dans cet instant, sinon la seconde, qui peut manquer.</translation>
    </message>
    <message>
        <source>Takes the first branch if the value is true, else the second, which may be left out.</source>
        <translation>Prend la première branche si la valeur est vraie, sinon la seconde, qui peut manquer.</translation>
    </message>
    <message>
        <source>Its body again and again: it starts in the instant in which it ends. Never ends.</source>
        <translation>Son corps, encore et encore : il redémarre à l’instant où il se termine. Ne se termine jamais.</translation>
    </message>
    <message>
        <source>Its body so many times, one after the other.</source>
        <translation>Son corps autant de fois, l’une après l’autre.</translation>
    </message>
    <message>
        <source>weak abort: its body until a later instant in which the condition holds, or until the body ends. The body still acts in that instant.</source>
        <translation>weak abort : son corps jusqu’à un instant ultérieur où la condition est vraie, ou jusqu’à ce que le corps se termine. Le corps agit encore dans cet instant.</translation>
    </message>
    <message>
        <source>strong abort: its body until a later instant in which the condition holds, or until the body ends. The body does nothing any more in that instant.</source>
        <translation>strong abort : son corps jusqu’à un instant ultérieur où la condition est vraie, ou jusqu’à ce que le corps se termine. Le corps ne fait plus rien dans cet instant.</translation>
    </message>
    <message>
        <source>Does, in its place, what another module does, and ends when that ends.</source>
        <translation>Fait, à sa place, ce que fait un autre module, et se termine quand il se termine.</translation>
    </message>
    <message>
        <source>Ends its body when a condition holds: weak, after it has acted; strong, before.</source>
        <translation>Termine son corps quand une condition est vraie : weak, après qu’il a agi ; strong, avant.</translation>
    </message>
    <message>
        <source>Ends the sustained emission when the condition holds.</source>
        <translation>Termine l’émission soutenue quand la condition est vraie.</translation>
    </message>
    <message>
        <source>The condition that ends the body of an abort, from the next instant on.</source>
        <translation>La condition qui termine le corps d’un abort, à partir de l’instant suivant.</translation>
    </message>
    <message>
        <source>The branch that is taken where the condition does not hold.</source>
        <translation>La branche prise quand la condition n’est pas vraie.</translation>
    </message>
    <message>
        <source>All at the same time; ends when the last of them ends.</source>
        <translation>Toutes en même temps ; se termine quand la dernière se termine.</translation>
    </message>
    <message>
        <source>The one, then the other, in the instant in which the first ends.</source>
        <translation>L’une, puis l’autre, à l’instant où la première se termine.</translation>
    </message>
    <message>
        <source>Holds where its operand is anything but One.</source>
        <translation>Vrai quand son opérande est autre que Un.</translation>
    </message>
    <message>
        <source>Holds where its operand is Zero; unknown where it is neither One nor Zero.</source>
        <translation>Vrai quand son opérande est Zéro ; inconnu quand il n’est ni Un ni Zéro.</translation>
    </message>
    <message>
        <source>Holds where both operands hold.</source>
        <translation>Vrai quand les deux opérandes le sont.</translation>
    </message>
    <message>
        <source>Holds where one of the operands holds.</source>
        <translation>Vrai quand l’un des opérandes l’est.</translation>
    </message>
    <message>
        <source>Always holds.</source>
        <translation>Toujours vrai.</translation>
    </message>
    <message>
        <source>Never holds.</source>
        <translation>Jamais vrai.</translation>
    </message>
    <message>
        <source>States and transitions, as the whole body of a module. It takes an initial transition when it starts; later, in each instant, the first one that is triggered.</source>
        <translation>Des états et des transitions, comme corps entier d’un module. Prend une transition initiale au démarrage ; ensuite, à chaque instant, la première dont la condition est vraie.</translation>
    </message>
    <message>
        <source>Equations that hold in each instant, over registers.</source>
        <translation>Des équations vraies à chaque instant, sur des registres.</translation>
    </message>
    <message>
        <source>A state of the automaton, with what it runs and the signals that it shows.</source>
        <translation>Un état de l’automate, avec ce qu’il exécute et les signaux qu’il montre.</translation>
    </message>
    <message>
        <source>The transitions of the automaton.</source>
        <translation>Les transitions de l’automate.</translation>
    </message>
    <message>
        <source>A transition that is taken when the automaton starts.</source>
        <translation>Une transition prise au démarrage de l’automate.</translation>
    </message>
    <message>
        <source>A strong transition: what the state runs is silent in that instant.</source>
        <translation>Une transition forte : ce que l’état exécute se tait dans cet instant.</translation>
    </message>
    <message>
        <source>A weak transition: what the state runs still acts in that instant.</source>
        <translation>Une transition faible : ce que l’état exécute agit encore dans cet instant.</translation>
    </message>
    <message>
        <source>Taken when what the state runs has ended by itself.</source>
        <translation>Prise quand ce que l’état exécute s’est terminé de lui-même.</translation>
    </message>
    <message>
        <source>A transition into the state ends the automaton.</source>
        <translation>Une transition vers cet état termine l’automate.</translation>
    </message>
    <message>
        <source>Comes behind all transitions with a number.</source>
        <translation>Vient après toutes les transitions numérotées.</translation>
    </message>
    <message>
        <source>Name, value at the start and signal of the next value of each register.</source>
        <translation>Nom, valeur de départ et signal de la valeur suivante de chaque registre.</translation>
    </message>
    <message>
        <source>The signals that the module is given.</source>
        <translation>Les signaux que le module reçoit.</translation>
    </message>
    <message>
        <source>The signals that the module gives.</source>
        <translation>Les signaux que le module donne.</translation>
    </message>
    <message>
        <source>Signals between the parts of the module.</source>
        <translation>Les signaux entre les parties du module.</translation>
    </message>
    <message>
        <source>Where the modules are that this one runs.</source>
        <translation>Où se trouvent les modules que celui-ci exécute.</translation>
    </message>
    <message>
        <source>A module: its interface, one statement, end.</source>
        <translation>Un module : son interface, une instruction, end.</translation>
    </message>
</context>
<context>
    <name>libraries</name>
    <message>
        <source>%1 is required</source>
        <translation>%1 est obligatoire</translation>
    </message>
    <message>
        <source>The following argument was not expected: %1</source>
        <translation>Cet argument n’était pas attendu : %1</translation>
    </message>
    <message>
        <source>The following arguments were not expected: %1</source>
        <translation>Ces arguments n’étaient pas attendus : %1</translation>
    </message>
    <message>
        <source>Run with %1 for more information.</source>
        <translation>Pour en savoir plus : %1.</translation>
    </message>
    <message>
        <source>%1 requires %2</source>
        <translation>%1 demande %2</translation>
    </message>
    <message>
        <source>%1 excludes %2</source>
        <translation>%1 exclut %2</translation>
    </message>
    <message>
        <source>Could not convert: %1 = %2</source>
        <translation>Valeur impossible à convertir : %1 = %2</translation>
    </message>
    <message>
        <source>The value %1 is not an allowed value for %2</source>
        <translation>La valeur %1 n’est pas admise pour %2</translation>
    </message>
    <message>
        <source>%1: too many inputs for a flag</source>
        <translation>%1 : trop de valeurs pour un drapeau</translation>
    </message>
    <message>
        <source>%1: Should be true/false or a number</source>
        <translation>%1 : vrai, faux ou un nombre est attendu</translation>
    </message>
    <message>
        <source>Should be true/false or a number</source>
        <translation>vrai, faux ou un nombre est attendu</translation>
    </message>
    <message>
        <source>%1: %2 required %3 missing</source>
        <translation>%1 : il manque %2 %3</translation>
    </message>
    <message>
        <source>%2 required %3 missing</source>
        <translation>il manque %2 %3</translation>
    </message>
    <message>
        <source>%1 required %2 missing</source>
        <translation>il manque %1 %2</translation>
    </message>
    <message>
        <source>At least %1 required but received %2</source>
        <translation>il en faut au moins %1, et il y en a %2</translation>
    </message>
    <message>
        <source>At Most %1 required but received %2</source>
        <translation>il en faut au plus %1, et il y en a %2</translation>
    </message>
    <message>
        <source>Expected exactly %1 arguments to %2, got %3</source>
        <translation>%2 prend exactement %1 arguments, non %3</translation>
    </message>
    <message>
        <source>Expected at least %1 arguments to %2, got %3</source>
        <translation>%2 prend au moins %1 arguments, non %3</translation>
    </message>
    <message>
        <source>%1 was given a disallowed flag override</source>
        <translation>%1 ne prend pas de valeur</translation>
    </message>
    <message>
        <source>%1 not found</source>
        <translation>%1 n’a pas été trouvé</translation>
    </message>
    <message>
        <source>Value %1 not in range %2 to %3</source>
        <translation>la valeur %1 n’est pas entre %2 et %3</translation>
    </message>
    <message>
        <source>%1 not in {%2}</source>
        <translation>%1 n’est pas l’un de {%2}</translation>
    </message>
    <message>
        <source>Failed parsing %1 as a %2</source>
        <translation>%1 ne peut pas être lu comme %2</translation>
    </message>
    <message>
        <source>Failed parsing number (%1)</source>
        <translation>%1 n’est pas un nombre</translation>
    </message>
    <message>
        <source>Number less or equal to 0: %1</source>
        <translation>le nombre doit être plus grand que 0 : %1</translation>
    </message>
    <message>
        <source>File does not exist: %1</source>
        <translation>le fichier n’existe pas : %1</translation>
    </message>
    <message>
        <source>File is actually a directory: %1</source>
        <translation>le fichier est en fait un dossier : %1</translation>
    </message>
    <message>
        <source>Directory does not exist: %1</source>
        <translation>le dossier n’existe pas : %1</translation>
    </message>
    <message>
        <source>Directory is actually a file: %1</source>
        <translation>le dossier est en fait un fichier : %1</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>aucun fichier ou dossier de ce nom</translation>
    </message>
    <message>
        <source>syntax error, unexpected %1, expecting %L2</source>
        <translation>erreur de syntaxe : %1 est inattendu, %2 est attendu</translation>
    </message>
    <message>
        <source>syntax error, unexpected %1</source>
        <translation>erreur de syntaxe : %1 est inattendu</translation>
    </message>
    <message>
        <source>syntax error</source>
        <translation>erreur de syntaxe</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>accès refusé</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>est un dossier</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>n’est pas un dossier</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>connexion refusée</translation>
    </message>
    <message>
        <source>Connection timed out</source>
        <translation>délai de connexion dépassé</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>plus de place sur le disque</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Emploi </translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Arguments </translation>
    </message>
    <message>
        <source>Needs</source>
        <translation>Avec </translation>
    </message>
    <message>
        <source>Excludes</source>
        <translation>Sans </translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>OBLIGATOIRE</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONS</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options </translation>
    </message>
</context>
</TS>
