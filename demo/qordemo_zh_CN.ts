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
</context>
</TS>
