<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>QorDesign</name>
    <message>
        <source>Class %1 not found</source>
        <translation>找不到类 %1</translation>
    </message>
    <message>
        <source>A component named %1 already exists</source>
        <translation>已存在名为 %1 的组件</translation>
    </message>
    <message>
        <source>No component to write</source>
        <translation>没有要写入的组件</translation>
    </message>
    <message>
        <source>The component stream cannot be written</source>
        <translation>无法写入组件流</translation>
    </message>
    <message>
        <source>Junk after the component</source>
        <translation>组件之后有多余的数据</translation>
    </message>
    <message>
        <source>it is longer than a component text may be</source>
        <translation>它超过了组件文本的最大长度</translation>
    </message>
    <message>
        <source>Class %1 has no property %2</source>
        <translation>类 %1 没有属性 %2</translation>
    </message>
    <message>
        <source>Invalid value of property %2 of class %1</source>
        <translation>类 %1 的属性 %2 的值无效</translation>
    </message>
    <message>
        <source>A widget of class %1 is nested in the non-visual %2</source>
        <translation>类 %1 的控件嵌套在非可视组件 %2 中</translation>
    </message>
    <message>
        <source>Property %2 of class %1 cannot be written</source>
        <translation>类 %1 的属性 %2 不可写</translation>
    </message>
    <message>
        <source>Class %1 made no component</source>
        <translation>类 %1 未创建组件</translation>
    </message>
    <message>
        <source>Property %2 of class %1 cannot take the value read</source>
        <translation>类 %1 的属性 %2 不能接受读到的值</translation>
    </message>
    <message>
        <source>A component of class %1 cannot be read into a %2</source>
        <translation>类 %1 的组件不能读入 %2</translation>
    </message>
    <message>
        <source>Not a component stream</source>
        <translation>不是组件流</translation>
    </message>
    <message>
        <source>The component stream ends inside a component</source>
        <translation>组件流在组件内部结束</translation>
    </message>
    <message>
        <source>The component stream is damaged</source>
        <translation>组件流已损坏</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing or not a text</source>
        <translation>“%1”缺失或不是文本</translation>
    </message>
    <message>
        <source>a property is not an object</source>
        <translation>某个属性不是对象</translation>
    </message>
    <message>
        <source>a property has no name</source>
        <translation>某个属性没有名称</translation>
    </message>
    <message>
        <source>the data of property %1 is not base64</source>
        <translation>属性 %1 的数据不是 base64</translation>
    </message>
    <message>
        <source>the data of property %1 is not a value</source>
        <translation>属性 %1 的数据不是值</translation>
    </message>
    <message>
        <source>the value of property %1 does not fit its type</source>
        <translation>属性 %1 的值与其类型不符</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a list</source>
        <translation>“%1”不是列表</translation>
    </message>
    <message>
        <source>The component text is damaged: %1</source>
        <translation>组件文本已损坏：%1</translation>
    </message>
    <message>
        <source>a component is not an object</source>
        <translation>某个组件不是对象</translation>
    </message>
    <message>
        <source>a component has no class</source>
        <translation>某个组件没有类</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid component name</source>
        <translation>“%1”不是有效的组件名称</translation>
    </message>
    <message>
        <source>[NoName]</source>
        <translation>[无名称]</translation>
    </message>
</context>
<context>
    <name>QorDsnConst</name>
    <message>
        <source>&amp;Flip Children</source>
        <translation>翻转子控件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>全部(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Selected</source>
        <translation>选中者(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Position</source>
        <translation>位置(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Align...</source>
        <translation>对齐(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Size...</source>
        <translation>大小(&amp;S)...</translation>
    </message>
    <message>
        <source>Scal&amp;e...</source>
        <translation>缩放(&amp;E)...</translation>
    </message>
    <message>
        <source>Attri&amp;b...</source>
        <translation>属性(&amp;B)...</translation>
    </message>
    <message>
        <source>&amp;Event...</source>
        <translation>事件(&amp;E)...</translation>
    </message>
    <message>
        <source>Image List Editor</source>
        <translation>图像列表编辑器</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Divide</source>
        <translation>分割</translation>
    </message>
    <message>
        <source>Graphic Unsupported</source>
        <translation>不支持的图形</translation>
    </message>
    <message>
        <source>Image List Editor...</source>
        <translation>图像列表编辑器...</translation>
    </message>
    <message>
        <source>Invalid Property Value;</source>
        <translation>无效的属性值；</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Cut</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>全选(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>删除(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Control</source>
        <translation>控件(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Bring to Front</source>
        <translation>置于顶层(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Send to Back</source>
        <translation>置于底层(&amp;S)</translation>
    </message>
</context>
<context>
    <name>TDialogPosAlign</name>
    <message>
        <source>Alignment</source>
        <translation>对齐</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>水平</translation>
    </message>
    <message>
        <source>&amp;No Change</source>
        <translation>不变(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Left Sides</source>
        <translation>左边对齐(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Center</source>
        <translation>居中(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Right Sides</source>
        <translation>右边对齐(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Space Equally</source>
        <translation>等间距(&amp;S)</translation>
    </message>
    <message>
        <source>Center in &amp;Window</source>
        <translation>窗口内居中(&amp;W)</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>垂直</translation>
    </message>
    <message>
        <source>&amp;Top Sides</source>
        <translation>顶边对齐(&amp;T)</translation>
    </message>
    <message>
        <source>C&amp;enter</source>
        <translation>居中(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Bottom Sides</source>
        <translation>底边对齐(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>确定(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
</context>
<context>
    <name>TDialogPosScale</name>
    <message>
        <source>Scale</source>
        <translation>缩放</translation>
    </message>
    <message>
        <source>&amp;Scaling factor:</source>
        <translation>缩放比例(&amp;S)：</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>确定(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
</context>
<context>
    <name>TDialogPosSize</name>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>宽度：</translation>
    </message>
    <message>
        <source>&amp;No Change</source>
        <translation>不变(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Shrink to Smallest</source>
        <translation>缩至最小(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Grow to Largest</source>
        <translation>扩至最大(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>宽度(&amp;W)：</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>高度：</translation>
    </message>
    <message>
        <source>Shrin&amp;k to Smallest</source>
        <translation>缩至最小(&amp;K)</translation>
    </message>
    <message>
        <source>Grow to &amp;Largest</source>
        <translation>扩至最大(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>高度(&amp;H)：</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>确定(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
</context>
<context>
    <name>TPropertyEditor</name>
    <message>
        <source>&apos;%1&apos; is not %2</source>
        <translation>“%1”不是%2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid integer value</source>
        <translation>“%1”不是有效的整数值</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid character</source>
        <translation>“%1”不是有效的字符</translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation>编辑文本</translation>
    </message>
    <message>
        <source>a size (width x height)</source>
        <translation>大小（宽 x 高）</translation>
    </message>
    <message>
        <source>a point (x, y)</source>
        <translation>点（x, y）</translation>
    </message>
    <message>
        <source>a rectangle ([(x, y), width x height])</source>
        <translation>矩形（[(x, y), 宽 x 高]）</translation>
    </message>
    <message>
        <source>margins ([left, top, right, bottom])</source>
        <translation>边距（[左, 上, 右, 下]）</translation>
    </message>
    <message>
        <source>a size policy ([horizontal, vertical, stretch, stretch])</source>
        <translation>大小策略（[水平, 垂直, 伸展, 伸展]）</translation>
    </message>
    <message>
        <source>a font (family, size)</source>
        <translation>字体（字族, 大小）</translation>
    </message>
    <message>
        <source>%1 is edited through its fields</source>
        <translation>%1 须通过其各个字段编辑</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid key sequence</source>
        <translation>“%1”不是有效的快捷键</translation>
    </message>
    <message>
        <source>Key Sequence</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not an image file</source>
        <translation>“%1”不是图像文件</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>选择图像</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.svg *.xpm)</source>
        <translation>图像 (*.png *.jpg *.jpeg *.bmp *.gif *.svg *.xpm)</translation>
    </message>
    <message>
        <source>String List</source>
        <translation>字符串列表</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a valid date or time</source>
        <translation>“%1”不是有效的日期或时间</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a component of the form</source>
        <translation>“%1”不是窗体的组件</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a %2</source>
        <translation>“%1”不是 %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a slot of the form that fits %2</source>
        <translation>“%1”不是窗体中与 %2 相符的槽</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>（无）</translation>
    </message>
    <message>
        <source>Connect %1</source>
        <translation>连接 %1</translation>
    </message>
</context>
<context>
    <name>TQorCompTreeView</name>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>下移</translation>
    </message>
</context>
<context>
    <name>TQorDesignDocument</name>
    <message>
        <source>Cannot make the recovery folder %1</source>
        <translation>无法创建恢复文件夹 %1</translation>
    </message>
    <message>
        <source>Cannot lock the recovery file %1</source>
        <translation>无法锁定恢复文件 %1</translation>
    </message>
    <message>
        <source>Cannot write the recovery file %1: %2</source>
        <translation>无法写入恢复文件 %1：%2</translation>
    </message>
    <message>
        <source>The file holds no design</source>
        <translation>文件中没有设计</translation>
    </message>
    <message>
        <source>The design has no file name yet</source>
        <translation>设计还没有文件名</translation>
    </message>
    <message>
        <source>Cannot save %1: there is no design stage</source>
        <translation>无法保存 %1：没有设计舞台</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>无法保存 %1：%2</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>无法打开 %1：%2</translation>
    </message>
    <message>
        <source>Cannot open %1: the file is larger than a design may be</source>
        <translation>无法打开 %1：文件超出设计允许的大小</translation>
    </message>
    <message>
        <source>Cannot recover %1: a running design uses it</source>
        <translation>无法恢复 %1：正在运行的设计在使用它</translation>
    </message>
    <message>
        <source>Cannot recover %1: the file is damaged</source>
        <translation>无法恢复 %1：文件已损坏</translation>
    </message>
    <message>
        <source>Cannot recover %1: %2</source>
        <translation>无法恢复 %1：%2</translation>
    </message>
    <message>
        <source>There is no design stage</source>
        <translation>没有设计舞台</translation>
    </message>
    <message>
        <source>The file holds more than one design</source>
        <translation>文件中有多个设计</translation>
    </message>
    <message>
        <source>The file holds a design of class %1, the stage is a %2</source>
        <translation>文件中的设计属于类 %1，舞台是 %2</translation>
    </message>
</context>
<context>
    <name>TQorDesignHistory</name>
    <message>
        <source>Insert %1</source>
        <translation>插入 %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Nudge</source>
        <translation>微移</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>调整大小</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
</context>
<context>
    <name>TQorItemsEditor</name>
    <message>
        <source>Edit Items...</source>
        <translation>编辑项目...</translation>
    </message>
    <message>
        <source>Items of %1</source>
        <translation>%1 的项目</translation>
    </message>
</context>
<context>
    <name>TQorPagesEditor</name>
    <message>
        <source>Add Page</source>
        <translation>添加页</translation>
    </message>
    <message>
        <source>Delete Page</source>
        <translation>删除页</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>上一页</translation>
    </message>
</context>
<context>
    <name>TVhoObjInspector</name>
    <message>
        <source>Invalid Property Value; %1</source>
        <translation>无效的属性值；%1</translation>
    </message>
</context>
</TS>
