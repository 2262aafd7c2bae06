<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>QorDemoWindow</name>
    <message>
        <source>QorDesign demo</source>
        <translation>QorDesign 演示</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>组件面板</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>组件</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>对象检查器</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>事件</translation>
    </message>
    <message numerus="yes">
        <source>%n component(s) selected</source>
        <translation>
            <numerusform>已选中 %n 个组件</numerusform>
        </translation>
    </message>
    <message>
        <source>Design</source>
        <translation>设计</translation>
    </message>
    <message>
        <source>Stage: %1, %2</source>
        <translation>设计台：%1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%n component(s) on the stage</source>
        <translation>
            <numerusform>设计台上有 %n 个组件</numerusform>
        </translation>
    </message>
    <message>
        <source>(no verbs)</source>
        <translation>（无命令）</translation>
    </message>
    <message>
        <source>&amp;Arrange</source>
        <translation>排列(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Component</source>
        <translation>组件(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>重命名(&amp;R)</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>上移(&amp;U)</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>下移(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新建(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Import .ui...</source>
        <translation>导入 .ui(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export .ui...</source>
        <translation>导出 .ui(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Recent Files</source>
        <translation>最近的文件(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>%1[*] - QorDesign demo</source>
        <translation>%1[*] - QorDesign 演示</translation>
    </message>
    <message>
        <source>The design has unsaved changes. Save them first?</source>
        <translation>设计有未保存的更改。要先保存吗？</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Left out, of classes this program does not know:
%1</source>
        <translation>以下组件的类本程序不认识，已略去：
%1</translation>
    </message>
    <message>
        <source>Designs (*.qord *.qordt);;All files (*)</source>
        <translation>设计 (*.qord *.qordt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>另存为</translation>
    </message>
    <message>
        <source>Designs (*.qord);;Readable designs (*.qordt)</source>
        <translation>设计 (*.qord);;可读设计 (*.qordt)</translation>
    </message>
    <message>
        <source>Import .ui</source>
        <translation>导入 .ui</translation>
    </message>
    <message>
        <source>Qt Designer forms (*.ui)</source>
        <translation>Qt Designer 窗体 (*.ui)</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Export .ui</source>
        <translation>导出 .ui</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>（无）</translation>
    </message>
    <message>
        <source>Unsaved work of %1 was found (%2). Recover it?</source>
        <translation>找到 %1 未保存的工作（%2）。要恢复吗？</translation>
    </message>
    <message>
        <source>an untitled design</source>
        <translation>未命名的设计</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>恢复</translation>
    </message>
    <message>
        <source>&amp;Customize</source>
        <translation>自定义(&amp;C)</translation>
    </message>
    <message>
        <source>Form Version &amp;1</source>
        <translation>表单版本 &amp;1</translation>
    </message>
    <message>
        <source>Form Version &amp;2</source>
        <translation>表单版本 &amp;2</translation>
    </message>
    <message>
        <source>&amp;Reset to Default</source>
        <translation>恢复默认(&amp;R)</translation>
    </message>
    <message>
        <source>Customize</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>Some of your changes could not be kept in version %1 of the form.</source>
        <translation>您的部分更改无法保留在表单的版本 %1 中。</translation>
    </message>
    <message>
        <source>Version %1 of the form</source>
        <translation>表单版本 %1</translation>
    </message>
    <message>
        <source>&amp;What I Changed...</source>
        <translation>我的更改(&amp;W)...</translation>
    </message>
    <message>
        <source>The form is as the program built it.</source>
        <translation>表单与程序构建时相同。</translation>
    </message>
    <message numerus="yes">
        <source>%n change(s) to the form as the program built it:</source>
        <translation>
            <numerusform>对程序构建的表单的 %n 处更改：</numerusform>
        </translation>
    </message>
</context>
</TS>
