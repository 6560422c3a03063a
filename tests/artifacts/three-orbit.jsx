import { useEffect, useRef } from "react";
import * as THREE from "three";
import { OrbitControls } from "three/examples/jsm/controls/OrbitControls";

export default function Scene() {
  const ref = useRef();
  useEffect(() => {
    ref.current.dataset.length = String(new THREE.Vector3(1, 2, 2).length());
    const scene = new THREE.Scene();
    scene.add(new THREE.Mesh(new THREE.TorusKnotGeometry(1, 0.3, 64, 8), new THREE.MeshNormalMaterial()));
    const camera = new THREE.PerspectiveCamera(60, 1, 0.1, 100);
    let renderer;
    try { renderer = new THREE.WebGLRenderer(); } catch { return; }
    ref.current.appendChild(renderer.domElement);
    const controls = new OrbitControls(camera, renderer.domElement);
    renderer.render(scene, camera);
    return () => { controls.dispose(); renderer.dispose(); };
  }, []);
  return <div ref={ref} className="h-[300px] w-[300px]" />;
}
