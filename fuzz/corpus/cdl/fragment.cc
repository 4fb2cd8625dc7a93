<ColorCorrection id="a">
  <Description>one</Description>
  <InputDescription>in</InputDescription>
  <ViewingDescription>dark</ViewingDescription>
  <SOPNode>
    <Description>sop</Description>
    <Slope>1.1 1 0.9</Slope>
    <Offset>-0.1, 0, 0.1</Offset>
    <Power>1 1e0 0x1p0</Power>
  </SOPNode>
  <SatNode><Saturation>0.9</Saturation></SatNode>
</ColorCorrection>
