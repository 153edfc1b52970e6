<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>DebuggerPanel</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
    <message>
        <source>State :</source>
        <translation>État :</translation>
    </message>
    <message>
        <source>Zero</source>
        <translation>Zéro</translation>
    </message>
    <message>
        <source>One</source>
        <translation>Un</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>Set or Reset</source>
        <translation>Set ou Reset</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
</context>
<context>
    <name>Inputs_form</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
</context>
<context>
    <name>Load_Form</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
    <message>
        <source>Load ZUC File:    </source>
        <translation>Charger fichier ZUC :</translation>
    </message>
    <message>
        <source>Load ZUC</source>
        <translation>Charger ZUC</translation>
    </message>
    <message>
        <source>Load ZU File :     </source>
        <translation>Charger fichier ZU :</translation>
    </message>
    <message>
        <source>Load ZU</source>
        <translation>Charger ZU</translation>
    </message>
</context>
<context>
    <name>LocalsPanel</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>KIVA</source>
        <translation>KIVA</translation>
    </message>
</context>
<context>
    <name>OutputsPanel</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>KIVA</source>
        <translation>KIVA</translation>
    </message>
    <message>
        <source>Key: %1</source>
        <translation>Touche : %1</translation>
    </message>
    <message>
        <source>Lines and what they do</source>
        <translation>Lignes et ce qu’elles font</translation>
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
        <source>both present and absent</source>
        <translation>à la fois présent et absent</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>inconnu</translation>
    </message>
</context>
<context>
    <name>RegisterPanel</name>
    <message>
        <source>Dialog</source>
        <translation>Dialogue</translation>
    </message>
</context>
<context>
    <name>kiva::DebuggerPanel</name>
    <message>
        <source>ZU text</source>
        <translation>Texte ZU</translation>
    </message>
    <message>
        <source>Debugger Panel</source>
        <translation>Panneau du débogueur</translation>
    </message>
</context>
<context>
    <name>kiva::DiagramPane</name>
    <message>
        <source>Automaton that is shown</source>
        <translation>Automate affiché</translation>
    </message>
    <message>
        <source>Automata</source>
        <translation>Automates</translation>
    </message>
    <message>
        <source>Automaton</source>
        <translation>Automate</translation>
    </message>
</context>
<context>
    <name>kiva::DiagramView</name>
    <message>
        <source>Automaton</source>
        <translation>Automate</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>dans %1</translation>
    </message>
    <message>
        <source>begins with %1</source>
        <translation>commence par %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 vers %2</translation>
    </message>
    <message>
        <source>next %1</source>
        <translation>ensuite %1</translation>
    </message>
</context>
<context>
    <name>kiva::FenPrincipale</name>
    <message>
        <source>Ouvrir un fichier ZUC</source>
        <translation>Ouvrir un fichier ZUC</translation>
    </message>
    <message>
        <source>Fichier ( *.zuc)</source>
        <translation>Fichier ( *.zuc)</translation>
    </message>
    <message>
        <source>Ouvrir un fichier ZU</source>
        <translation>Ouvrir un fichier ZU</translation>
    </message>
    <message>
        <source>Fichier ( *.zu)</source>
        <translation>Fichier ( *.zu)</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Value of %1</source>
        <translation>Valeur de %1</translation>
    </message>
    <message>
        <source>No Input Selected !!</source>
        <translation>Aucune entrée choisie !!</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Commandes</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Configure Personal finances</source>
        <translation>Configurer</translation>
    </message>
    <message>
        <source>Show about dialog</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>The run over time: waves, branches, why (F9)</source>
        <translation>La simulation dans le temps : ondes, branches, pourquoi (F9)</translation>
    </message>
    <message>
        <source>Init</source>
        <translation>Init</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Scope</source>
        <translation>Oscilloscope</translation>
    </message>
    <message>
        <source>Panels</source>
        <translation>Panneaux</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>Ouvrir...</translation>
    </message>
    <message>
        <source>Recent files</source>
        <translation>Fichiers récents</translation>
    </message>
    <message>
        <source>running: instant %1</source>
        <translation>en cours : instant %1</translation>
    </message>
    <message>
        <source>%1: instant %2 of %3</source>
        <translation>%1 : instant %2 sur %3</translation>
    </message>
    <message>
        <source>%1, branch %2</source>
        <translation>%1, branche %2</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;F5&lt;/b&gt; or &lt;b&gt;Return&lt;/b&gt; Go &amp;nbsp; &lt;b&gt;F6&lt;/b&gt; Init &amp;nbsp; &lt;b&gt;F7&lt;/b&gt; Set &amp;nbsp; &lt;b&gt;F8&lt;/b&gt; Preferences &amp;nbsp; &lt;b&gt;F1&lt;/b&gt; Help &amp;nbsp; &lt;b&gt;F9&lt;/b&gt; Scope&lt;br&gt;&lt;b&gt;Alt+I&lt;/b&gt; inputs: &lt;b&gt;Space&lt;/b&gt; or &lt;b&gt;Return&lt;/b&gt; chooses the row, &lt;b&gt;Space&lt;/b&gt; again goes through its states, &lt;b&gt;F2&lt;/b&gt; edits its value&lt;br&gt;&lt;b&gt;Alt+1&lt;/b&gt; One &amp;nbsp; &lt;b&gt;Alt+0&lt;/b&gt; Zero &amp;nbsp; &lt;b&gt;Alt+T&lt;/b&gt; Top &amp;nbsp; &lt;b&gt;Alt+B&lt;/b&gt; Bottom &amp;nbsp; &lt;b&gt;Alt+S&lt;/b&gt; Set &amp;nbsp; &lt;b&gt;Alt+R&lt;/b&gt; Reset&lt;br&gt;&lt;b&gt;Ctrl+O&lt;/b&gt; open another module &amp;nbsp; &lt;b&gt;Alt+N&lt;/b&gt; load ZUC &amp;nbsp; &lt;b&gt;Ctrl+U&lt;/b&gt; load ZU &amp;nbsp; &lt;b&gt;Alt+L&lt;/b&gt; locals &amp;nbsp; &lt;b&gt;Alt+G&lt;/b&gt; registers &amp;nbsp; &lt;b&gt;Alt+O&lt;/b&gt; outputs&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;F5&lt;/b&gt; ou &lt;b&gt;Entrée&lt;/b&gt; Go &amp;nbsp; &lt;b&gt;F6&lt;/b&gt; Init &amp;nbsp; &lt;b&gt;F7&lt;/b&gt; Set &amp;nbsp; &lt;b&gt;F8&lt;/b&gt; Préférences &amp;nbsp; &lt;b&gt;F1&lt;/b&gt; Aide &amp;nbsp; &lt;b&gt;F9&lt;/b&gt; Oscilloscope&lt;br&gt;&lt;b&gt;Alt+I&lt;/b&gt; entrées : &lt;b&gt;Espace&lt;/b&gt; ou &lt;b&gt;Entrée&lt;/b&gt; choisit la ligne, &lt;b&gt;Espace&lt;/b&gt; encore parcourt ses états, &lt;b&gt;F2&lt;/b&gt; modifie sa valeur&lt;br&gt;&lt;b&gt;Alt+1&lt;/b&gt; Un &amp;nbsp; &lt;b&gt;Alt+0&lt;/b&gt; Zéro &amp;nbsp; &lt;b&gt;Alt+T&lt;/b&gt; Top &amp;nbsp; &lt;b&gt;Alt+B&lt;/b&gt; Bottom &amp;nbsp; &lt;b&gt;Alt+S&lt;/b&gt; Set &amp;nbsp; &lt;b&gt;Alt+R&lt;/b&gt; Reset&lt;br&gt;&lt;b&gt;Ctrl+O&lt;/b&gt; ouvrir un autre module &amp;nbsp; &lt;b&gt;Alt+N&lt;/b&gt; charger ZUC &amp;nbsp; &lt;b&gt;Ctrl+U&lt;/b&gt; charger ZU &amp;nbsp; &lt;b&gt;Alt+L&lt;/b&gt; locaux &amp;nbsp; &lt;b&gt;Alt+G&lt;/b&gt; registres &amp;nbsp; &lt;b&gt;Alt+O&lt;/b&gt; sorties&lt;/p&gt;</translation>
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
        <source>both at once: a contradiction</source>
        <translation>les deux à la fois : une contradiction</translation>
    </message>
    <message>
        <source>neither: not determined</source>
        <translation>ni l’un ni l’autre : indéterminé</translation>
    </message>
    <message>
        <source>not computed yet, or it depends on something unknown</source>
        <translation>pas encore calculé, ou dépend d’un inconnu</translation>
    </message>
    <message>
        <source>&lt;h3&gt;What the colours mean&lt;/h3&gt;</source>
        <translation>&lt;h3&gt;Ce que disent les couleurs&lt;/h3&gt;</translation>
    </message>
    <message>
        <source>&lt;h3&gt;How an instant runs&lt;/h3&gt;&lt;p&gt;Choose a row of the inputs, then its state. The row keeps it until you change it. &lt;b&gt;Go&lt;/b&gt; runs one instant: every output, local and register takes its colour; registers show the state for the next instant. &lt;b&gt;Set&lt;/b&gt; starts the module in the next instant, &lt;b&gt;Init&lt;/b&gt; puts everything back to the start. &lt;b&gt;Preferences&lt;/b&gt; brings a closed panel back.&lt;/p&gt;&lt;h3&gt;Keys&lt;/h3&gt;</source>
        <translation>&lt;h3&gt;Comment se déroule un instant&lt;/h3&gt;&lt;p&gt;Choisissez une ligne des entrées, puis son état. La ligne le garde jusqu’à ce que vous le changiez. &lt;b&gt;Go&lt;/b&gt; exécute un instant : chaque sortie, local et registre prend sa couleur ; les registres montrent l’état de l’instant suivant. &lt;b&gt;Set&lt;/b&gt; démarre le module à l’instant suivant, &lt;b&gt;Init&lt;/b&gt; remet tout au début. &lt;b&gt;Préférences&lt;/b&gt; rouvre un panneau fermé.&lt;/p&gt;&lt;h3&gt;Touches&lt;/h3&gt;</translation>
    </message>
    <message>
        <source>KIVA: help</source>
        <translation>KIVA : aide</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Plus grand</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Plus petit</translation>
    </message>
    <message>
        <source>Told size</source>
        <translation>Taille d’origine</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>Colours without red and green</source>
        <translation>Couleurs sans rouge ni vert</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Modules (*.zu *.zuc)</source>
        <translation>Modules (*.zu *.zuc)</translation>
    </message>
    <message>
        <source>The run of %1 is not saved. Save it as a session?</source>
        <translation>La simulation de %1 n’est pas enregistrée. L’enregistrer comme session ?</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Sessions (*.kivasession);;Stimuli (*.stimuli)</source>
        <translation>Sessions (*.kivasession);;Stimuli (*.stimuli)</translation>
    </message>
    <message>
        <source>The last run of %1 ended without being saved. Take it up again?</source>
        <translation>La dernière simulation de %1 s’est terminée sans être enregistrée. La reprendre ?</translation>
    </message>
    <message>
        <source>Load Panel</source>
        <translation>Panneau de chargement</translation>
    </message>
    <message>
        <source>Inputs Panel</source>
        <translation>Panneau des entrées</translation>
    </message>
    <message>
        <source>Locals Panel</source>
        <translation>Panneau des locaux</translation>
    </message>
    <message>
        <source>Registers Panel</source>
        <translation>Panneau des registres</translation>
    </message>
    <message>
        <source>Outputs Panel</source>
        <translation>Panneau des sorties</translation>
    </message>
    <message>
        <source>Debugger Panel</source>
        <translation>Panneau du débogueur</translation>
    </message>
</context>
<context>
    <name>kiva::FilePanel</name>
    <message>
        <source>ZUC file</source>
        <translation>Fichier ZUC</translation>
    </message>
    <message>
        <source>ZU file</source>
        <translation>Fichier ZU</translation>
    </message>
    <message>
        <source>Load Panel</source>
        <translation>Panneau de chargement</translation>
    </message>
</context>
<context>
    <name>kiva::InputsDialog</name>
    <message>
        <source>Inputs</source>
        <translation>Entrées</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Tout choisir</translation>
    </message>
    <message>
        <source>Inputs Panel</source>
        <translation>Panneau des entrées</translation>
    </message>
</context>
<context>
    <name>kiva::InputsPane</name>
    <message>
        <source>Next instant</source>
        <translation>Instant suivant</translation>
    </message>
    <message>
        <source>set, reset: the main window</source>
        <translation>set, reset : la fenêtre principale</translation>
    </message>
    <message>
        <source>The module has no inputs. %1</source>
        <translation>Le module n’a pas d’entrées. %1</translation>
    </message>
    <message>
        <source>%1 more inputs: the main window</source>
        <translation>%1 autres entrées : la fenêtre principale</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 is %2 (key %3)</source>
        <translation>%1 est %2 (touche %3)</translation>
    </message>
    <message>
        <source>%1 is %2</source>
        <translation>%1 est %2</translation>
    </message>
    <message>
        <source>level</source>
        <translation>niveau</translation>
    </message>
    <message>
        <source>%1 is a pulse</source>
        <translation>%1 est une impulsion</translation>
    </message>
    <message>
        <source>a pulse is Zero again behind one instant (key p)</source>
        <translation>une impulsion redevient Zéro après un instant (touche p)</translation>
    </message>
    <message>
        <source>Value of %1</source>
        <translation>Valeur de %1</translation>
    </message>
    <message>
        <source>pulse</source>
        <translation>impulsion</translation>
    </message>
</context>
<context>
    <name>kiva::LocalsPanel</name>
    <message>
        <source>Locals</source>
        <translation>Locaux</translation>
    </message>
    <message>
        <source>Locals Panel</source>
        <translation>Panneau des locaux</translation>
    </message>
</context>
<context>
    <name>kiva::OutputsPanel</name>
    <message>
        <source>Outputs</source>
        <translation>Sorties</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Tout choisir</translation>
    </message>
    <message>
        <source>Outputs Panel</source>
        <translation>Panneau des sorties</translation>
    </message>
</context>
<context>
    <name>kiva::RegisterPanel</name>
    <message>
        <source>Registers</source>
        <translation>Registres</translation>
    </message>
    <message>
        <source>Registers Panel</source>
        <translation>Panneau des registres</translation>
    </message>
</context>
<context>
    <name>kiva::ScopeWindow</name>
    <message>
        <source>%1 - scope</source>
        <translation>%1 - oscilloscope</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Next instant</source>
        <translation>Instant suivant</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Pourquoi</translation>
    </message>
    <message>
        <source>Waves</source>
        <translation>Ondes</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>Simulation</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Automaton</source>
        <translation>Automate</translation>
    </message>
    <message>
        <source>Module</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Key: %1</source>
        <translation>Touche : %1</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>Branche</translation>
    </message>
    <message>
        <source>Branches</source>
        <translation>Branches</translation>
    </message>
    <message>
        <source>the branch that is shown (B)</source>
        <translation>la branche affichée (B)</translation>
    </message>
    <message>
        <source>Instant</source>
        <translation>Instant</translation>
    </message>
    <message>
        <source>running: instant %1</source>
        <translation>en cours : instant %1</translation>
    </message>
    <message>
        <source>instant %1 of %2</source>
        <translation>instant %1 sur %2</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>run</source>
        <translation>simuler</translation>
    </message>
    <message>
        <source>Press %1&lt;b&gt;Return&lt;/b&gt; for an instant, &lt;b&gt;Left&lt;/b&gt; to go back, &lt;b&gt;?&lt;/b&gt; for all keys.</source>
        <translation>Touches : %1&lt;b&gt;Entrée&lt;/b&gt; pour un instant, &lt;b&gt;Gauche&lt;/b&gt; pour revenir, &lt;b&gt;?&lt;/b&gt; pour toutes les touches.</translation>
    </message>
    <message>
        <source> to choose inputs, </source>
        <translation> pour choisir des entrées, </translation>
    </message>
    <message>
        <source>This instant changed nothing.</source>
        <translation>Cet instant n’a rien changé.</translation>
    </message>
    <message>
        <source>The chosen signal has not changed before.</source>
        <translation>Le signal choisi n’a pas changé avant.</translation>
    </message>
    <message>
        <source>The chosen signal does not change any more.</source>
        <translation>Le signal choisi ne change plus.</translation>
    </message>
    <message>
        <source>&lt;b&gt;1 to 9&lt;/b&gt; the next state of an input &amp;nbsp; &lt;b&gt;Up, Down&lt;/b&gt; the signal above, below &amp;nbsp; &lt;b&gt;Shift+Left, Shift+Right&lt;/b&gt; the second cursor &amp;nbsp; &lt;b&gt;Escape&lt;/b&gt; leaves and stops</source>
        <translation>&lt;b&gt;1 à 9&lt;/b&gt; l’état suivant d’une entrée &amp;nbsp; &lt;b&gt;Haut, Bas&lt;/b&gt; le signal au-dessus, au-dessous &amp;nbsp; &lt;b&gt;Maj+Gauche, Maj+Droite&lt;/b&gt; le second curseur &amp;nbsp; &lt;b&gt;Échap&lt;/b&gt; quitte et arrête</translation>
    </message>
    <message>
        <source>there is no automaton to write</source>
        <translation>il n’y a pas d’automate à écrire</translation>
    </message>
    <message>
        <source>Write automaton</source>
        <translation>Écrire l’automate</translation>
    </message>
    <message>
        <source>Pictures (*.svg)</source>
        <translation>Images (*.svg)</translation>
    </message>
    <message>
        <source>%1 is written</source>
        <translation>%1 est écrit</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 ne peut pas être écrit</translation>
    </message>
    <message>
        <source>Write waves</source>
        <translation>Écrire les ondes</translation>
    </message>
    <message>
        <source>Value change dumps (*.vcd)</source>
        <translation>Fichiers de changements (*.vcd)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Sessions (*.kivasession);;Stimuli (*.stimuli)</source>
        <translation>Sessions (*.kivasession);;Stimuli (*.stimuli)</translation>
    </message>
    <message>
        <source>%1 is saved</source>
        <translation>%1 est enregistré</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Sessions and stimuli (*.kivasession *.stimuli *.stim)</source>
        <translation>Sessions et stimuli (*.kivasession *.stimuli *.stim)</translation>
    </message>
    <message>
        <source>%1 is open</source>
        <translation>%1 est ouvert</translation>
    </message>
    <message>
        <source>instant</source>
        <translation>instant</translation>
    </message>
    <message>
        <source>until, as in: drink and instant &gt; 9</source>
        <translation>jusqu’à, comme : drink and instant &gt; 9</translation>
    </message>
    <message>
        <source>find a signal</source>
        <translation>trouver un signal</translation>
    </message>
    <message>
        <source>mark this instant as</source>
        <translation>marquer cet instant comme</translation>
    </message>
    <message>
        <source>run how many instants</source>
        <translation>simuler combien d’instants</translation>
    </message>
    <message>
        <source>character %1: %2</source>
        <translation>caractère %1 : %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no instant of this branch</source>
        <translation>« %1 » n’est pas un instant de cette branche</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number of instants</source>
        <translation>« %1 » n’est pas un nombre d’instants</translation>
    </message>
    <message>
        <source>No signal that is shown has &quot;%1&quot; in its name</source>
        <translation>Aucun signal affiché n’a « %1 » dans son nom</translation>
    </message>
    <message>
        <source>to the first instant</source>
        <translation>au premier instant</translation>
    </message>
    <message>
        <source>an instant back</source>
        <translation>un instant en arrière</translation>
    </message>
    <message>
        <source>Go: one instant with the choices</source>
        <translation>Go : un instant avec les choix</translation>
    </message>
    <message>
        <source>an instant on, as it was</source>
        <translation>un instant en avant, tel qu’il était</translation>
    </message>
    <message>
        <source>to the last instant</source>
        <translation>au dernier instant</translation>
    </message>
    <message>
        <source>run so many instants</source>
        <translation>simuler tant d’instants</translation>
    </message>
    <message>
        <source>run until a condition holds</source>
        <translation>simuler jusqu’à ce qu’une condition soit vraie</translation>
    </message>
    <message>
        <source>run on, and stop</source>
        <translation>simuler sans fin, et arrêter</translation>
    </message>
    <message>
        <source>to an instant by its number</source>
        <translation>à un instant par son numéro</translation>
    </message>
    <message>
        <source>to the change of the chosen signal before</source>
        <translation>au changement précédent du signal choisi</translation>
    </message>
    <message>
        <source>to its next change</source>
        <translation>à son changement suivant</translation>
    </message>
    <message>
        <source>the input chosen last is a pulse, or a level</source>
        <translation>la dernière entrée choisie est une impulsion, ou un niveau</translation>
    </message>
    <message>
        <source>show the next branch</source>
        <translation>afficher la branche suivante</translation>
    </message>
    <message>
        <source>mark this instant</source>
        <translation>marquer cet instant</translation>
    </message>
    <message>
        <source>Init: back to the start</source>
        <translation>Init : retour au début</translation>
    </message>
    <message>
        <source>wider instants</source>
        <translation>instants plus larges</translation>
    </message>
    <message>
        <source>narrower instants</source>
        <translation>instants plus étroits</translation>
    </message>
    <message>
        <source>the chosen row one up</source>
        <translation>la ligne choisie d’un cran vers le haut</translation>
    </message>
    <message>
        <source>the chosen row one down</source>
        <translation>la ligne choisie d’un cran vers le bas</translation>
    </message>
    <message>
        <source>show or hide what the compiler made</source>
        <translation>montrer ou cacher ce que le compilateur a fait</translation>
    </message>
    <message>
        <source>write the branch as a value change dump</source>
        <translation>écrire la branche comme fichier de changements</translation>
    </message>
    <message>
        <source>write the automaton that is shown as SVG</source>
        <translation>écrire l’automate affiché en SVG</translation>
    </message>
    <message>
        <source>a larger automaton</source>
        <translation>un automate plus grand</translation>
    </message>
    <message>
        <source>a smaller automaton</source>
        <translation>un automate plus petit</translation>
    </message>
    <message>
        <source>save the session, or the branch as stimuli</source>
        <translation>enregistrer la session, ou la branche comme stimuli</translation>
    </message>
    <message>
        <source>open a session, or run stimuli</source>
        <translation>ouvrir une session, ou simuler des stimuli</translation>
    </message>
    <message>
        <source>dark or light</source>
        <translation>sombre ou clair</translation>
    </message>
    <message>
        <source>colours that are told apart without red and green</source>
        <translation>couleurs distinctes sans rouge ni vert</translation>
    </message>
    <message>
        <source>larger</source>
        <translation>plus grand</translation>
    </message>
    <message>
        <source>smaller</source>
        <translation>plus petit</translation>
    </message>
    <message>
        <source>told size</source>
        <translation>taille d’origine</translation>
    </message>
    <message>
        <source>the keys</source>
        <translation>les touches</translation>
    </message>
    <message>
        <source>until</source>
        <translation>jusqu’à</translation>
    </message>
    <message>
        <source>prove</source>
        <translation>prouver</translation>
    </message>
    <message>
        <source>prove the properties that the source has as comments, ;; @never</source>
        <translation>prouver les propriétés que la source porte en commentaires, ;; @never</translation>
    </message>
    <message>
        <source>prove that a condition never holds, or show how it does</source>
        <translation>prouver qu’une condition n’est jamais vraie, ou montrer comment elle l’est</translation>
    </message>
    <message>
        <source>never, as in: open and closing, or: reach closing</source>
        <translation>jamais, par exemple : open and closing, ou : reach closing</translation>
    </message>
</context>
<context>
    <name>kiva::ServerLine</name>
    <message>
        <source>State of the evaluation server</source>
        <translation>État du serveur d’évaluation</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Reconnect</source>
        <translation>Se reconnecter</translation>
    </message>
    <message>
        <source>Server %1: connected</source>
        <translation>Serveur %1 : connecté</translation>
    </message>
    <message>
        <source>Server %1: waiting</source>
        <translation>Serveur %1 : en attente</translation>
    </message>
    <message>
        <source>Server %1: lost</source>
        <translation>Serveur %1 : perdu</translation>
    </message>
    <message>
        <source>Lost: %1</source>
        <translation>Perdu : %1</translation>
    </message>
</context>
<context>
    <name>kiva::SourcePane</name>
    <message>
        <source>About the source</source>
        <translation>À propos de la source</translation>
    </message>
    <message>
        <source>What the colours and signs mean</source>
        <translation>Ce que disent couleurs et signes</translation>
    </message>
    <message>
        <source>Signals of the line</source>
        <translation>Signaux de la ligne</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>The module has no map of its source beside it. Compile it with
tarn --map FILE.zu, and its text stands here, lit by what it does.</source>
        <translation>Le module n’a pas de carte de sa source à côté de lui. Compilez-le avec
tarn --map FICHIER.zu, et son texte apparaît ici, éclairé par ce qu’il fait.</translation>
    </message>
    <message>
        <source>%1, of %2</source>
        <translation>%1, de %2</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Ligne %1 : %2</translation>
    </message>
    <message>
        <source>no signal is named in it</source>
        <translation>elle ne nomme aucun signal</translation>
    </message>
    <message>
        <source>a condition that holds</source>
        <translation>une condition vraie</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (line %2)</source>
        <translation>« %1 » (ligne %2)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2, line %3)</source>
        <translation>« %1 » (%2, ligne %3)</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source> or </source>
        <translation> ou </translation>
    </message>
    <message>
        <source>The map beside the module belongs to another text of it. Compile the source
with tarn --map FILE.zu, and it stands here, lit by what it does.</source>
        <translation>La carte à côté du module appartient à un autre texte de celui-ci. Compilez la source
avec tarn --map FICHIER.zu, et elle apparaît ici, éclairée par ce qu’elle fait.</translation>
    </message>
</context>
<context>
    <name>kiva::SourceText</name>
    <message>
        <source>started now</source>
        <translation>démarre maintenant</translation>
    </message>
    <message>
        <source>waits or goes on</source>
        <translation>attend ou continue</translation>
    </message>
    <message>
        <source>ended now</source>
        <translation>se termine maintenant</translation>
    </message>
    <message>
        <source>killed now</source>
        <translation>est tué maintenant</translation>
    </message>
    <message>
        <source>Source of %1</source>
        <translation>Source de %1</translation>
    </message>
    <message>
        <source>this condition holds</source>
        <translation>cette condition est vraie</translation>
    </message>
    <message>
        <source>this condition does not hold</source>
        <translation>cette condition est fausse</translation>
    </message>
</context>
<context>
    <name>kiva::TimeControl</name>
    <message>
        <source>a run is under way</source>
        <translation>une simulation est en cours</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 ne peut pas être écrit</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 ne peut pas être lu</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Arrêté</translation>
    </message>
    <message>
        <source>In none of these instants holds %1</source>
        <translation>%1 n’est vrai à aucun de ces instants</translation>
    </message>
    <message>
        <source>instant %1: %2</source>
        <translation>instant %1 : %2</translation>
    </message>
    <message>
        <source>%1: %2 instants agree</source>
        <translation>%1 : %2 instants concordent</translation>
    </message>
    <message>
        <source>reached in instant %1</source>
        <translation>atteint à l’instant %1</translation>
    </message>
    <message>
        <source>fails in instant %1</source>
        <translation>échoue à l’instant %1</translation>
    </message>
    <message>
        <source>not known: </source>
        <translation>inconnu : </translation>
    </message>
    <message>
        <source>never reached: </source>
        <translation>jamais atteint : </translation>
    </message>
    <message>
        <source>holds: </source>
        <translation>vrai : </translation>
    </message>
    <message>
        <source>character %1: %2</source>
        <translation>caractère %1 : %2</translation>
    </message>
</context>
<context>
    <name>kiva::TimeLine</name>
    <message>
        <source>Run</source>
        <translation>Simulation</translation>
    </message>
    <message>
        <source>instant %1 of %2, branch %3</source>
        <translation>instant %1 sur %2, branche %3</translation>
    </message>
    <message>
        <source>Init</source>
        <translation>Init</translation>
    </message>
    <message>
        <source>main</source>
        <translation>principale</translation>
    </message>
    <message>
        <source>%1: from %2 of %3</source>
        <translation>%1 : depuis %2 de %3</translation>
    </message>
</context>
<context>
    <name>kiva::WaveView</name>
    <message>
        <source>Waves</source>
        <translation>Ondes</translation>
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
        <source>%1 is %2 at %3</source>
        <translation>%1 est %2 à %3</translation>
    </message>
    <message>
        <source>instant %1</source>
        <translation>instant %1</translation>
    </message>
    <message>
        <source>Press Enter for the first instant</source>
        <translation>Appuyez sur Entrée pour le premier instant</translation>
    </message>
</context>
<context>
    <name>kiva::WhyPane</name>
    <message>
        <source>Why</source>
        <translation>Pourquoi</translation>
    </message>
    <message>
        <source>Choose a signal in the waves: why it is what it is stands here.</source>
        <translation>Choisissez un signal dans les ondes : ici apparaît pourquoi il est ce qu’il est.</translation>
    </message>
    <message>
        <source>Why is %1 %2 at %3?</source>
        <translation>Pourquoi %1 est-il %2 à %3 ?</translation>
    </message>
    <message>
        <source>Nothing has run yet: press Enter.</source>
        <translation>Rien n’a encore été simulé : appuyez sur Entrée.</translation>
    </message>
    <message>
        <source>It was chosen for this instant.</source>
        <translation>Il a été choisi pour cet instant.</translation>
    </message>
    <message>
        <source>Nothing that is known decides it.</source>
        <translation>Rien de connu ne le décide.</translation>
    </message>
    <message>
        <source>%1 is %2 at %3</source>
        <translation>%1 est %2 à %3</translation>
    </message>
    <message>
        <source>%1 is raised at %2</source>
        <translation>%1 est levé à %2</translation>
    </message>
    <message>
        <source>%1 is not raised at %2</source>
        <translation>%1 n’est pas levé à %2</translation>
    </message>
    <message>
        <source>It is always so.</source>
        <translation>Il en est toujours ainsi.</translation>
    </message>
    <message>
        <source>%1 of %2 inputs and %3 of %4 registers do not matter</source>
        <translation>%1 des %2 entrées et %3 des %4 registres ne comptent pas</translation>
    </message>
    <message>
        <source>, since the start</source>
        <translation>, depuis le début</translation>
    </message>
    <message>
        <source>, for a very long time</source>
        <translation>, depuis très longtemps</translation>
    </message>
    <message>
        <source>, since %1</source>
        <translation>, depuis %1</translation>
    </message>
    <message>
        <source>go to %1</source>
        <translation>aller à %1</translation>
    </message>
    <message>
        <source>Make %1 %2 at %3: it is %4 then</source>
        <translation>Mettre %1 à %2 à %3 : il est alors %4</translation>
    </message>
    <message>
        <source>branch</source>
        <translation>branche</translation>
    </message>
    <message>
        <source>%1 goes on at %2</source>
        <translation>%1 se poursuit à %2</translation>
    </message>
    <message>
        <source>%1 does not go on at %2</source>
        <translation>%1 ne se poursuit pas à %2</translation>
    </message>
    <message>
        <source>the state is %1 at %2</source>
        <translation>l'état est %1 à %2</translation>
    </message>
</context>
</TS>
